// What goes to the terminal while a test calls something.
#pragma once

#include <gtest/gtest.h>

#include <string>

// What the call prints on standard output and on standard error, which must be the same text.
template <class Call>
std::string printedBy(Call&& call) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call();
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, testing::internal::GetCapturedStderr());
    return out;
}
