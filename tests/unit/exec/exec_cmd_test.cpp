#include "exec/exec_cmd.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "commons/text_formatter.h"
#include "exec/log_exec_cmd.h"
#include "recording_log.h"

using namespace zelvo;
using testing::ElementsAre;

namespace {

// The text of the failure of a command.
std::string failureOf(ExecCmd& command) {
    try {
        command.exec();
    } catch (const Exc<&ExecCmd::Failed>& failure) {
        return failure.what();
    }
    return "";
}

template <class Command>
Command makeShell(const char* script) {
    Command command("/bin/sh");
    command << "-c" << script;
    return command;
}

}  // namespace

TEST(ExecCmd, PrintsAsShellText) {
    ExecCmd command("/opt/my tool");
    EXPECT_EQ(command.getString(), "/opt/my\\ tool");
    command << "a b" << std::string() << std::string("line\nfeed") << "$x";
    EXPECT_EQ(command.getString(), "/opt/my\\ tool a\\ b  line'\n'feed \\$x");
}

TEST(ExecCmd, PassesArgumentsUnchanged) {
    ExecCmd command("/usr/bin/printf");
    command << "[%s]"
            << "a b"
            << ""
            << "$x'\n";
    EXPECT_EQ(command.exec(), 0);
    EXPECT_EQ(command.stdout, "[a b][][$x'\n]");
    EXPECT_TRUE(command.started && command.finished);
}

TEST(ExecCmd, TellsAFailureWithItsStreamsInOrder) {
    const struct {
        const char* script;
        const char* input;
        const char* sections;
    } rows[] = {
        {"exit 3", "", ""},
        {"echo a; exit 3", "", "Stdout is\na\n"},
        {"printf a; exit 3", "", "Stdout is\na\n"},
        {"printf a; echo %1% >&2; cat >&2; exit 3", "in",
         "Stdin is\nin\nStdout is\na\nStderr is\n%1%\nin\n"},
    };
    for (const auto& row : rows) {
        ExecCmd command = makeShell<ExecCmd>(row.script);
        command.stdin = row.input;
        EXPECT_EQ(failureOf(command), "Execution of " + command.getString() +
                                          " failed with return code 3.\n" + row.sections);
    }
    ExecCmd killed = makeShell<ExecCmd>("kill -9 $$");
    EXPECT_THAT(failureOf(killed), testing::EndsWith(" failed with return code -1.\n"));
}

TEST(ExecCmd, NamesTheFailureAndItsPlace) {
    ExecCmd command("/bin/false");
    try {
        command.exec();
        ADD_FAILURE() << "nothing was raised";
    } catch (const ExTraceable& failure) {
        EXPECT_THAT(formatPlainTextMessage(failure),
                    testing::MatchesRegex("ExecCmd::Failed: Execution of /bin/false failed with "
                                          "return code 1.\n \\[./exec/exec_cmd.cpp:[0-9]+\\]"));
    }
}

TEST(ExecCmd, CopiesStandAlone) {
    ExecCmd original("/bin/echo");
    original << "one";
    original.setEnv("X", "1");
    original.setEnv("X", "2");
    EXPECT_EQ(original.exec(), 0);
    ExecCmd copy("/bin/false");
    copy = original;
    copy << "two";
    EXPECT_EQ(copy.env.at("X"), "2");
    EXPECT_EQ(copy.exec(std::nothrow), 0);
    EXPECT_EQ(copy.stdout, "one\none two\n") << "a second run appends";
    EXPECT_EQ(original.getString(), "/bin/echo one");
    EXPECT_EQ(original.stdout, "one\n");
}

TEST(ExecCmd, EndsTheProcessWhenARunFailsThatMustNotThrow) {
    static_assert(noexcept(std::declval<ExecCmd&>().exec(std::nothrow)));
    ExecCmd command("/bin/true");
    command.stdin.assign(1 << 20, 'x');
    EXPECT_DEATH(command.exec(std::nothrow), "writeToString failed");
}

TEST(LogExecCmd, LogsEnvironmentCommandAndOutput) {
    RecordingLog log;
    auto command = makeShell<tLogExecCmd>("printf out");
    command.setEnv("QRD_PASSWORD", "secret");
    command.setEnv("LANG", "C");
    EXPECT_EQ(command.exec(), 0);
    EXPECT_THAT(log.lines,
                ElementsAre("ENV[LANG]=C", "ENV[QRD_PASSWORD]=secret",
                            "Executing utility: /bin/sh -c printf\\ out",
                            "The utility succesfully executed.",
                            "The return code was  \nThe output on STDOUT was: \nout \nNo output on "
                            "STDERR were performed by the utility"));
}

TEST(LogExecCmd, LogsNothingBehindAFailureThatItRaises) {
    RecordingLog log;
    auto command = makeShell<tLogExecCmd>("exit 2");
    EXPECT_THROW(command.exec(), Exc<&ExecCmd::Failed>);
    EXPECT_THAT(log.lines, ElementsAre("Executing utility: /bin/sh -c exit\\ 2"));
}

TEST(LogExecCmd, LogsTheCodeWhereItMustNotThrow) {
    RecordingLog log;
    auto command = makeShell<tLogExecCmd>("echo no >&2; exit 2");
    command.setEnv("LANG", "C");
    EXPECT_EQ(command.exec(std::nothrow), 2);
    EXPECT_EQ(makeShell<tLogExecCmd>("true").exec(std::nothrow), 0);
    EXPECT_THAT(
        log.lines,
        ElementsAre("Executing utility: /bin/sh -c echo\\ no\\ \\>\\&2\\;\\ exit\\ 2",
                    "The utility executed with the return code 2",
                    "The return code was  \nNo output on STDOUT were performed by the utility \n"
                    "The output on STDERR was: \nno\n",
                    "Executing utility: /bin/sh -c true",
                    "The utility executed with the return code 0"));
}
