// What a call tells: on the terminal, or by failing.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
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

// The message of the failure that the call raises; empty if none.
template <class Call>
std::string messageOf(Call&& call) {
    try {
        call();
    } catch (const std::runtime_error& failure) {
        // Some failures have more than one base that is std::exception.
        return failure.what();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "";
}
