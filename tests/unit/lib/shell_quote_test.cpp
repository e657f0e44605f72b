#include "lib/shell_quote.h"

#include <gtest/gtest.h>
#include <stdio.h>

#include <stdexcept>

namespace {

// What a shell makes of the text as the one argument of a command.
std::string shellReads(const std::string& text) {
    FILE* const shell = popen(("printf %s " + text).c_str(), "r");
    std::string read;
    for (int c = fgetc(shell); c != EOF; c = fgetc(shell)) {
        read += static_cast<char>(c);
    }
    EXPECT_EQ(0, pclose(shell));
    return read;
}

TEST(ShellQuote, KeepsItsForm) {
    EXPECT_EQ("a\\ b", zelvo::sh_quote("a b"));
    EXPECT_EQ("a'\n'b", zelvo::sh_quote("a\nb"));
    EXPECT_EQ("", zelvo::sh_quote(""));
    EXPECT_EQ("--x=/a-b_c.d:{}!%,", zelvo::sh_quote("--x=/a-b_c.d:{}!%,"));
    EXPECT_EQ("\\\"\\#\\$\\&\\'\\(\\)\\*\\;\\<\\>\\?\\[\\\\\\`\\|\\~\\\t",
              zelvo::sh_quote("\"#$&'()*;<>?[\\`|~\t"));
}

TEST(ShellQuote, GivesAShellEveryByteBack) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(all, shellReads(zelvo::sh_quote(all)));
}

TEST(CheckShellArg, AcceptsPlainBytesOnly) {
    EXPECT_EQ(1, check_shell_arg_nothrow(nullptr));
    EXPECT_EQ(1, check_shell_arg_nothrow(""));
    EXPECT_EQ(1, check_shell_arg_nothrow("/a-b\xC3\xBC"));
    EXPECT_EQ(0, check_shell_arg_nothrow("a b"));
    EXPECT_EQ(0, check_shell_arg_nothrow("a\n"));
    EXPECT_NO_THROW(zelvo::check_shell_arg(""));
    try {
        zelvo::check_shell_arg("a;b");
        ADD_FAILURE();
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ("Internal error: bad escape_chars value", failure.what());
    }
}

}  // namespace
