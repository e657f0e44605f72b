#include "exec/exec_cmd.h"

#include <gmock/gmock.h>

#include <tuple>
#include <utility>

#include "exec/log_exec_cmd.h"
#include "recording_log.h"

using namespace zelvo;

namespace {

template <class Command>
Command makeShell(const char* script) {
    Command command("/bin/sh");
    command << "-c" << script;
    return command;
}

}  // namespace

TEST(ExecCmd, PrintsAsShellTextAndPassesArgumentsUnchanged) {
    ExecCmd command("/opt/my tool");
    command << "[%s]" << std::string("a b") << "" << std::string("$x'\n");
    EXPECT_EQ(command.getString(), "/opt/my\\ tool \\[%s] a\\ b  \\$x\\''\n'");
    command.utility = "/usr/bin/printf";
    EXPECT_EQ(command.exec(), 0);
    EXPECT_EQ(command.stdout, "[a b][][$x'\n]");
    EXPECT_TRUE(command.started && command.finished);
}

TEST(ExecCmd, TellsAFailureWithItsStreamsInOrder) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"kill -9 $$", "", "-1.\n"},
        {"echo a; exit 3", "", "3.\nStdout is\na\n"},
        {"printf a; echo %1% >&2; cat >&2; exit 3", "in",
         "3.\nStdin is\nin\nStdout is\na\nStderr is\n%1%\nin\n"},
    };
    for (const auto& [script, input, told] : rows) {
        ExecCmd command = makeShell<ExecCmd>(script);
        command.stdin = input;
        EXPECT_THAT([&] { command.exec(); }, testing::ThrowsMessage<Exc<&ExecCmd::Failed>>(
                                                 "Execution of " + command.getString() +
                                                 " failed with return code " + told));
    }
}

// A run that fails here ends the process.
static_assert(noexcept(std::declval<ExecCmd&>().exec(std::nothrow)));

TEST(LogExecCmd, LeavesItsTrail) {
    RecordingLog log;
    auto good = makeShell<tLogExecCmd>("printf out");
    good.setEnv("QRD_PASSWORD", "first");
    good.setEnv("QRD_PASSWORD", "secret");
    good.setEnv("LANG", "C");
    auto bad = makeShell<tLogExecCmd>("echo no >&2; exit 2");
    EXPECT_THROW(bad.exec(), Exc<&ExecCmd::Failed>);
    bad.stderr.clear();
    bad.env = good.env;
    EXPECT_EQ(bad.exec(std::nothrow), 2);
    EXPECT_EQ(good.exec(std::nothrow), 0);
    EXPECT_EQ(good.exec(), 0);
    const std::string goodRun = "Executing utility: /bin/sh -c printf\\ out";
    const std::string badRun = "Executing utility: /bin/sh -c echo\\ no\\ \\>\\&2\\;\\ exit\\ 2";
    const std::string executed = "The utility executed with the return code ";
    const std::string report = "The return code was  \n";
    EXPECT_THAT(log.lines, testing::ElementsAre(
                               badRun, badRun, executed + "2",
                               report + "No output on STDOUT were performed by the utility \nThe "
                                        "output on STDERR was: \nno\n",
                               goodRun, executed + "0", "ENV[LANG]=C", "ENV[QRD_PASSWORD]=secret",
                               goodRun, "The utility succesfully executed.",
                               report + "The output on STDOUT was: \noutout \nNo output on STDERR "
                                        "were performed by the utility"));
}
