#include "exec/cli_exec.h"

#include <gtest/gtest.h>

#include "recording_log.h"

using namespace zelvo;

TEST(CliExec, RunsAnUpdateOnlyWithOptions) {
    // Nothing is looked for on this machine.
    CliExec::first_run = false;
    CliExec::use_gate = false;
    const RecordingLog log;
    const CliExec fresh("/bin/false");
    CliExec command(fresh);
    command << "--update";
    command.expectOptions();
    EXPECT_EQ(command.exec(), 0);
    EXPECT_EQ(command.exec(std::nothrow), 0);
    EXPECT_FALSE(command.started);
    command.ExecCmd::operator<<("direct");
    CliExec viaBase(command);
    static_cast<CmdLine&>(viaBase) << "-option";
    EXPECT_EQ(viaBase.exec(std::nothrow), 1);
    CliExec viaLiteral(command);
    viaLiteral << "-option";
    EXPECT_EQ(CliExec(viaLiteral).exec(std::nothrow), 1);
    EXPECT_EQ(command.exec(std::nothrow), 0) << "the base's form for literals is no option";
    command = fresh;
    EXPECT_NE(command.args[0], fresh.args[0]) << "a copy has strings of its own";
    EXPECT_EQ(command.exec(std::nothrow), 1) << "a fresh command expects no options";
    EXPECT_TRUE(command.hasAnswered());
    CliExec missing("/nonexistent");
    EXPECT_EQ(missing.exec(std::nothrow), 1);
    EXPECT_FALSE(missing.hasAnswered()) << "the code is none of its own";
}
