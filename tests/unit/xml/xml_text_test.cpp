#include "xml/xml_text.h"

#include <gtest/gtest.h>

namespace zelvo {
namespace {

// Catches a byte sequence that passes as a character, and one that is dropped.
TEST(XmlText, HoldsOnlyWhatXmlCanHold) {
    const std::string bad = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"plain \t\n\r~\x7F", "plain \t\n\r~\x7F"},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {std::string("a\0b", 3), "a" + bad + "b"},
        {"\x1B[0m", bad + "[0m"},
        {"caf\xE9", "caf\xC3\xA9"},                    // ISO-8859-1
        {"\xE2\x82", "\xC3\xA2\xC2\x82"},              // cut off
        {"\x80\x80", "\xC2\x80\xC2\x80"},              // without a first byte
        {"\xC0\xBC", "\xC3\x80\xC2\xBC"},              // '<' in two bytes
        {"\xE0\x80\xBC", "\xC3\xA0\xC2\x80\xC2\xBC"},  // in three
        {"\xF8\x88\x80\x80\x80", "\xC3\xB8\xC2\x88\xC2\x80\xC2\x80\xC2\x80"},
        {"\xED\xA0\x80", bad},      // a surrogate
        {"\xEF\xBF\xBE", bad},      // U+FFFE
        {"\xF4\x90\x80\x80", bad},  // behind the last plane
    };
    for (const auto& [given, expected] : cases) {
        EXPECT_EQ(toXmlText(given), expected);
    }
}

}  // namespace
}  // namespace zelvo
