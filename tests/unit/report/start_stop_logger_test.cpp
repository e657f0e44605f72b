#include "report/start_stop_logger.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "run.h"

namespace zelvo {
namespace {

using Lines = std::vector<std::string>;

// Makes the logger of "deployer" and lets it die with this exit code, if any.
Lines linesOf(std::vector<std::string> words, int exitCode) {
    test::MemoryLog log;
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    {
        StartStopLogger logger("deployer", static_cast<int>(arguments.size()), arguments.data());
        logger.setExitCode(exitCode);
    }
    return log.lines;
}

// Catches the blanks of the two endings and arguments that are not shown as a shell takes them.
TEST(StartStopLogger, WritesTheCommandLineAndTheEnding) {
    EXPECT_EQ(linesOf({"./deployer", "--repository-pwd", "a b", ""}, 0),
              Lines({"deployer started : ./deployer --repository-pwd a\\ b ",
                     "deployer finished. Exit code: 0"}));
    EXPECT_EQ(linesOf({"x"}, -1),
              Lines({"deployer started : x", "deployer finished.  (exit code is not reported)"}));
}

// Catches a handler that is missing, or that stays behind its logger.
TEST(StartStopLogger, TellsWhenTheProcessBecomesADaemon) {
    test::MemoryLog log;
    char name[] = "x";
    char* arguments[] = {name};
    {
        const StartStopLogger logger("deployer", 1, arguments);
        ASSERT_EQ(childDaemonHandlers.size(), 1U);
        childDaemonHandlers.front()();
    }
    const std::string pid = std::to_string(getpid());
    EXPECT_EQ(log.lines.at(1), "deployer " + pid + " -> (" + pid + " daemon)");
    EXPECT_TRUE(childDaemonHandlers.empty());
    EXPECT_TRUE(parentDaemonHandlers.empty());
}

}  // namespace
}  // namespace zelvo
