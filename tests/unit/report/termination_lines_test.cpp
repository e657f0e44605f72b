#include "report/termination_lines.h"

#include <gtest/gtest.h>

#include "commons/termination.h"
#include "run.h"

namespace zelvo {
namespace {

using Lines = std::vector<std::string>;

// The wish to stop cannot be taken back in a process: no other test here may check for it. Catches
// lines that are lost, doubled, or written for a wish without a signal.
TEST(TerminationLines, EachSignalHasOneLine) {
    test::MemoryLog log;
    EXPECT_NO_THROW(checkProgramTerminated());
    noteTerminationSignal();
    noteTerminationSignal();
    log.log(std::string("next"));
    EXPECT_EQ(log.lines, Lines({"Deployer | Terminated", "Deployer | Terminated", "next"}));
    EXPECT_THROW(checkProgramTerminated(), MigrationTerminatedException);
    EXPECT_EQ(log.lines.size(), 3U);
    noteTerminationSignal();
    EXPECT_THROW(checkProgramTerminated(), MigrationTerminatedException);
    EXPECT_EQ(log.lines.size(), 4U);
}

TEST(TerminationLines, LinesStayOwedWithoutALog) {
    noteTerminationSignal();
    writeTerminationLines();
    test::MemoryLog log;
    writeTerminationLines();
    EXPECT_EQ(log.lines, Lines({"Deployer | Terminated"}));
}

}  // namespace
}  // namespace zelvo
