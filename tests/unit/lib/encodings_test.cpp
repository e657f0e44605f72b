#include <gtest/gtest.h>

#include <stdexcept>

#include "lib/base64.h"
#include "lib/shell_quote.h"

namespace {

using zelvo::sh_quote;

// Catches: a line break that costs data, a byte made of left-over bits.
TEST(Base64, GivesAllWholeBytesAndNamesWhatItSkips) {
    const std::string rows[][3] = {
        {"Zg==Zg==", "f", ""},
        // RFC 4648, section 10.
        {"Zm8=", "fo", ""},
        {"Zm9v", "foo", ""},
        {"Zm9vYmFy", "foobar", ""},
        {"Zm8", "fo", ""},
        {"+/+/", "\xFB\xFF\xBF", ""},
        {"AAAA", std::string(3, '\0'), ""},
        {"Zm9v\nYmFy", "foobar", "Bad base64 symbol: \n"},
        {"Z-m9\xFFv", "foo", "Bad base64 symbol: -Bad base64 symbol: \xFF"}};
    for (const auto& [text, bytes, complaint] : rows) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(bytes, zelvo::base64_decode(text));
        EXPECT_EQ(complaint, testing::internal::GetCapturedStderr());
    }
}

// Catches: an argument that a shell would read as more than itself.
TEST(ShellQuote, QuotesAndRefusesTheBytesThatAShellReads) {
    const std::string plain = "--x=/a-b_c.d:{}!%,^@\xC3\xBC";
    EXPECT_EQ(plain, sh_quote(plain));
    EXPECT_EQ("a'\n'\\ b", sh_quote("a\n b"));
    EXPECT_EQ("\\\"\\#\\$\\&\\'\\(\\)\\*\\;\\<\\>\\?\\[\\\\\\`\\|\\~\\\t",
              sh_quote("\"#$&'()*;<>?[\\`|~\t"));
    EXPECT_EQ(1, check_shell_arg_nothrow(nullptr));
    EXPECT_NO_THROW(zelvo::check_shell_arg(plain));
    EXPECT_THROW(zelvo::check_shell_arg("a\n"), std::runtime_error);
}

}  // namespace
