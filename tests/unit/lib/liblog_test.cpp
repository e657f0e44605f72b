#include "lib/liblog.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include <cerrno>
#include <string>

#include "told.h"

namespace {

std::string message(int number, const std::string& text) {
    return printedBy([&] {
        errno = number;
        messlog2(0, 1, "%s", text.c_str());
        EXPECT_EQ(number, errno);
    });
}

TEST(Messlog2, TellsBothStreamsOfTheMessageAndTheSystemError) {
    EXPECT_EQ("\n", message(0, ""));
    EXPECT_EQ("a\n", message(0, "a\n"));
    // The lengths about the size at which the text moves to the heap, and one far beyond it.
    for (const std::size_t length : {1U, 4060U, 4094U, 4095U, 4096U, 4097U, 100000U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(text + "\n", message(0, text));
        EXPECT_EQ(text + "\nSystem error 2: No such file or directory\n", message(ENOENT, text));
    }
    zelvo_set_program_name("/usr/sbin/tool");
    EXPECT_EQ("tool: a\n", message(0, "a"));
    zelvo_set_program_name(nullptr);
    EXPECT_EXIT(messlog2(7, 0, "gone %d", 1), testing::ExitedWithCode(7), "^gone 1\n");
}

std::string logged(const char* target, int level) {
    testing::internal::CaptureStderr();
    zelvo_log_init(target, level, LOG_USER, 0, "unit");
    zelvo_log(LOG_USER | LOG_WARNING, "n=%d", 1);
    return testing::internal::GetCapturedStderr();
}

TEST(ZelvoLog, SpeaksWhereItWasAsked) {
    EXPECT_EQ("n=1\n", logged("ConsoleX", LOG_WARNING));
    EXPECT_EQ("", logged("console", LOG_ERR));
    EXPECT_EQ("", logged("consol", LOG_DEBUG));
    zelvo_log_init(nullptr, 1, LOG_USER, 0, "unit");
    EXPECT_TRUE(zelvo_log == &syslog && zelvo_logv == &vsyslog);
}

}  // namespace
