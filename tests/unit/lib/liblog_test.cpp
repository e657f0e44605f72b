#include "lib/liblog.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include <cerrno>
#include <functional>
#include <string>

namespace {

// What a call writes to standard error, which must be what it writes to standard output.
std::string spoken(const std::function<void()>& call) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    call();
    std::string text = testing::internal::GetCapturedStderr();
    EXPECT_EQ(text, testing::internal::GetCapturedStdout());
    return text;
}

std::string message(int number, const std::string& text) {
    return spoken([&] {
        errno = number;
        messlog2(0, 1, "%s", text.c_str());
        EXPECT_EQ(number, errno);
    });
}

TEST(Messlog2, EndsTheLineOnce) {
    EXPECT_EQ("a\n", message(0, "a"));
    EXPECT_EQ("a\n", message(0, "a\n"));
    EXPECT_EQ("\n", message(0, ""));
}

TEST(Messlog2, NamesTheSystemError) {
    EXPECT_EQ("a\nSystem error 2: No such file or directory\n", message(ENOENT, "a"));
}

TEST(Messlog2, BringsTextsOfEveryLengthWhole) {
    for (const std::size_t length : {4060U, 4094U, 4095U, 4096U, 4097U, 100000U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(text + "\n", message(0, text)) << length;
        EXPECT_EQ(text + "\nSystem error 2: No such file or directory\n", message(ENOENT, text))
            << length;
    }
}

TEST(Messlog2, EndsTheProcessWithTheExitCode) {
    EXPECT_EXIT(
        {
            errno = 0;
            messlog2(7, 0, "gone %d", 1);
        },
        testing::ExitedWithCode(7), "^gone 1\n$");
}

TEST(Messlog2, ShowsTheBaseNameOfTheProgram) {
    zelvo_set_program_name("/usr/sbin/tool");
    EXPECT_EQ("tool: a\n", message(0, "a"));
    zelvo_set_program_name(nullptr);
    EXPECT_EQ("a\n", message(0, "a"));
}

std::string logged(const char* target, int level, int priority) {
    testing::internal::CaptureStderr();
    zelvo_log_init(target, level, LOG_USER, 0, "unit");
    zelvo_log(priority, "n=%d", 1);
    zelvo_log_init("none", 1, 0, 0, nullptr);
    return testing::internal::GetCapturedStderr();
}

TEST(ZelvoLog, SpeaksOnTheConsoleOnlyWhereItWasAsked) {
    EXPECT_EQ("n=1\n", logged("console", LOG_WARNING, LOG_USER | LOG_WARNING));
    EXPECT_EQ("n=1\n", logged("ConsoleX", LOG_DEBUG, LOG_WARNING));
    EXPECT_EQ("", logged("console", LOG_ERR, LOG_USER | LOG_WARNING));
    EXPECT_EQ("", logged("console", 0, LOG_EMERG));
    EXPECT_EQ("", logged("consol", LOG_DEBUG, LOG_ERR));
}

TEST(ZelvoLog, IsSyslogWithoutATarget) {
    zelvo_log_init(nullptr, 1, LOG_USER, 0, "unit");
    EXPECT_TRUE(zelvo_log == &syslog);
    EXPECT_TRUE(zelvo_logv == &vsyslog);
    zelvo_log_init(nullptr, 0, LOG_USER, 0, "unit");
    EXPECT_FALSE(zelvo_log == &syslog);
    closelog();
}

}  // namespace
