#include "deployer/help_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>

namespace {

// In help.txt a line that "$" does not end has blanks behind it up to the 78th column; "~" is a
// tab. Catches: a blank or a tab too few in what callers compare to the byte.
TEST(HelpText, IsTheOneThatCallersCompareWith) {
    std::string expected;
    std::ifstream text(SOURCE_DIR "/tests/unit/deployer/help.txt");
    ASSERT_TRUE(text);
    for (std::string line; std::getline(text, line); expected += line + "\n") {
        std::replace(line.begin(), line.end(), '~', '\t');
        if (line.ends_with('$')) {
            line.pop_back();
        } else {
            line.resize(78, ' ');
        }
    }
    EXPECT_EQ(expected, zelvo::helpText);
}

}  // namespace
