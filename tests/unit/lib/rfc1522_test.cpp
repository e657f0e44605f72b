#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "lib/iconv_recode.h"
#include "lib/rfc1522.h"
#include "told.h"

namespace {

using std::string;
using zelvo::iconvRecode;
using namespace zelvo::rfc1522;

TEST(Iconv, ConvertsOrStopsOrMarksWhatIsBroken) {
    EXPECT_EQ("grüße", iconvRecode("ISO-8859-1", "UTF-8", "gr\374\337e", false));
    // A state that ends with the text, and one character for two bytes of the input.
    EXPECT_EQ("\x1B$BF|\x1B(B", iconvRecode("UTF-8", "ISO-2022-JP", "\u65E5", false));
    EXPECT_EQ("\u00CA", iconvRecode("BIG5-HKSCS", "UTF-8", "\x88\x66", false));
    // More than one buffer, with a character across its end.
    string expected;
    for (int i = 0; i < 3000; ++i) expected += "\u20AC";
    EXPECT_EQ(expected, iconvRecode("CP1252", "UTF-8", string(3000, '\x80'), true));

    const string rows[][3] = {{"UTF-8", "a\377b", "a?b"},          // no byte of the encoding
                              {"UTF-8", "a\xE2\x82", "a??"},       // the end of the text
                              {"UTF-8", "\xED\xA0\x80z", "???z"},  // a surrogate
                              {"ASCII", "\xC3\xBC", "??"}};
    for (const auto& [from, text, marked] : rows) {
        EXPECT_EQ(marked, iconvRecode(from, "UTF-8", text, true));
    }
    const string head = "Cannot convert from UTF-8 to ISO-8859-1: ";
    const auto failureOf = [](const char* from, const char* to, const string& text) {
        return messageOf([&] { iconvRecode(from, to, text, false); });
    };
    EXPECT_EQ(head + "Invalid or incomplete multibyte or wide character",
              failureOf("UTF-8", "ISO-8859-1", "\u20AC"));
    EXPECT_EQ(head + "Invalid argument", failureOf("UTF-8", "ISO-8859-1", "a\xC3"));
    EXPECT_EQ("Conversion from none to UTF-8: Invalid argument", failureOf("none", "UTF-8", ""));
}

TEST(Rfc1522, DecodesEncodedWords) {
    const string rows[][2] = {
        // RFC 2047, section 8.
        {"=?US-ASCII?Q?Keith_Moore?= <moore@cs.utk.edu>", "Keith Moore <moore@cs.utk.edu>"},
        {"=?ISO-8859-1?Q?Keld_J=F8rn_Simonsen?= <keld@dkuug.dk>",
         "Keld J\u00F8rn Simonsen <keld@dkuug.dk>"},
        {"=?ISO-8859-1?B?SWYgeW91IGNhbiByZWFkIHRoaXMgeW8=?= "
         "=?ISO-8859-2?B?dSB1bmRlcnN0YW5kIHRoZSBleGFtcGxlLg==?=",
         "If you can read this you understand the example."},
        {"=?ISO-8859-1?Q?a?= b", "a b"},
        {"=?ISO-8859-1?Q?a?= \t =?ISO-8859-1?Q?b?=", "ab"},
        {"=?ISO-8859-1?Q?a?= =?ISO-8859-2?Q?_b?=", "a b"},
        // What is around stays.
        {" a  b\t=?utf-8?q?c?=  d ", " a  b\tc  d "},
        {"=?utf-8?Q?=c3=BC?=, =?utf-8?Q?=41=?=", "\u00FC, A="},
        {"=?utf-8?Q?=4x=_=F?=", "=4x= =F"},
        {"=?utf-8?Q?=FF?=", "?"}};
    for (const auto& [text, decoded] : rows) EXPECT_EQ(decoded, decode(text));
    for (const char* broken :
         {"=?", "=?utf-8", "=?utf-8?Q", "=?utf-8?Q?", "=?utf-8?Q?a",
          "=?utf-8?Q?a b?=", "=??Q?a?=", "=?utf-8??a?=", "(=?utf-8?Q?a?=)", "=?utf-8?Q?a? ="}) {
        EXPECT_EQ(broken, decode(broken));
    }
    EXPECT_THROW(decode("=?none?Q?a?="), std::runtime_error);
}

// Catches: a byte left plain that must not be, a word too long. That all texts come back is the law
// of the fuzz target.
TEST(Rfc1522, EncodesWhatIsNotPlain) {
    EXPECT_EQ("plain #$%&',.:;<>@[]^`{|}~\x7F 19azAZ",
              encode("plain #$%&',.:;<>@[]^`{|}~\x7F 19azAZ"));
    EXPECT_EQ("=?utf-8?Q?=00=1F=21=22=28=29=2A=2B=2D=2F=3D=3F=5F_~?=",
              encode(string("\0\x1F!\"()*+-/=?_ ~", 15)));
    EXPECT_EQ("=?utf-8?Q?=C3=A9_?= =?utf-8?Q?" + string(63, 'x') + "?=",
              encode("\u00E9 " + string(63, 'x')));
}

}  // namespace
