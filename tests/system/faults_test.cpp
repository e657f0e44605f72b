// What surrounds a restore goes wrong: its utilities, its caller, its disk, its installation.

#include "outcome.h"
#include "scenario.h"
#include "two_clients.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <regex>
#include <thread>

namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Clock = std::chrono::steady_clock;

const Lines kSuccess{"success"};
const std::string kRun = "; exec \"$0\" \"$@\"";

// ---- utilities ----

TEST(Utilities, ThatDoNotDoTheirWorkAreFailedCommands) {
    const std::string megabytes(3'000'000, 'x');
    const std::string rows[][2] = {
        {"stderr half; signal SEGV", "-1: half"},
        {"signal KILL", "-1"},
        {"print 3000000; exit 3",
         "3 | Stdout is\\n" + megabytes + "\\nStderr is\\n" + megabytes + "\\n"},
    };
    for (const auto& [fault, told] : rows) {
        SCOPED_TRACE(fault);
        Sandbox box;
        box.writeDump(kTwoClients);
        box.faults("match client --create bob: " + fault);
        EXPECT_EQ(box.deploy().out, "");
        EXPECT_TRUE(outcomeOf(box) ==
                    "success\nclient bob\n  FailedClientDeployment: bob\n    ExecCmd::Failed: "
                    "client --create bob -name bob -notify false -passwd  -owner admin => " +
                        told + "\n")
            << outcomeOf(box).substr(0, 1000);
        EXPECT_EQ(callsOf(box),
                  createOf("bob", 1) + createOf("eve", 2) + updateOf("eve") + kStatistics);
    }
}

// The one test that knows where in the sources a failure is raised. Catches: a place that is lost,
// that has the machine's own paths, or that is of another failure in the chain.
TEST(Result, TellsWhereEachFailureOfAChainWasRaised) {
    Sandbox box;
    box.writeDump(kTwoClients);
    box.faults("match client --create bob: stderr '<&>\\n'; exit 3");
    box.deploy();
    const std::string number = std::regex_replace(
        box.resultText(), std::regex("<line>[1-9][0-9]*</line>"), "<line>N</line>");
    // Rooms and functions of the restore have nothing to say here.
    const std::regex outer(
        "<context>[^<]* zelvo::[^<]*\\)[^<]*</context><file>\\./restore/[a-z_/]+\\.cpp</file>");
    EXPECT_EQ(
        std::regex_replace(number, outer, "(a place of the restore)"),
        "<?xml version=\"1.0\"?>\n<execution-result status=\"success\"><object name=\"bob\" "
        "type=\"client\"><message code=\"FailedClientDeployment\" severity=\"error\">(a place "
        "of the restore)<line>N</line><text>Failed deployment of client bob</text><message "
        "code=\"ExecCmd::Failed\" severity=\"error\"><context>void "
        "zelvo::ExecCmd::reportError() const</context><file>./exec/exec_cmd.cpp</file>"
        "<line>N</line><text>Execution of /opt/qrd/admin/vlib/api-cli/client.php --create bob "
        "-name bob -notify false -passwd  -owner admin failed with return code 3.\nStderr "
        "is\n&lt;&amp;&gt;\n</text></message></message></object></execution-result>\n");
}

std::string dumpWithTraffic(const std::string& traffic) {
    return "<migration-dump><client name=\"bob\"><traffic>" + traffic +
           "</traffic></client><client name=\"eve\"/></migration-dump>";
}

TEST(Input, MayBeLeftUnreadOnlyWhenThePipeHoldsItAll) {
    for (const bool fits : {true, false}) {
        Sandbox box;
        box.writeDump(dumpWithTraffic(std::string(fits ? 1'000 : 1'000'000, '7')));
        box.faults("match traffic --add-batch-user bob: ignore-stdin");
        const auto run = box.run(Sandbox::deployment());
        EXPECT_EQ(run.exitStatus, fits ? 0 : 1);
        EXPECT_EQ(run.err,
                  fits ? "" : "Uncaught std::exception: writeToString failed: Broken pipe\n");
        EXPECT_EQ(codesOf(box), Lines({fits ? "success" : "error"}));
        // A child that was not waited for may come to its journal too late.
        EXPECT_EQ(box.journal().size() == 6, fits);
        EXPECT_THAT(box.logText(), EndsWith(fits ? "finished. Exit code: 0\n"
                                                 : "finished.  (exit code is not reported)\n"));
    }
}

// ---- signals ----

struct Termination {
    const char* faults;
    int signals;
    bool gate = false;
};

// The answer is the same for the three, wherever they come.
TEST(Termination, IsNotedOnceASignalAndBreaksNoCommand) {
    const Termination rows[] = {
        {"call 1: signal-parent INT; sleep 30", 1},
        {"call 3: signal-parent HUP; sleep 30", 1},
        {"call 5: after; signal-parent TERM", 1},
        {"call 2: signal-parent TERM; sleep 60; signal-parent INT; sleep 60", 2},
        {"call 2: signal-parent TERM; sleep 30", 1, true},
    };
    for (const Termination& row : rows) {
        SCOPED_TRACE(row.faults);
        Sandbox box;
        box.withGate(row.gate);
        box.writeDump(kTwoClients);
        box.faults(row.faults);
        box.deploy();
        EXPECT_EQ(callsOf(box), kFiveCalls);
        EXPECT_EQ(codesOf(box), kSuccess);
        EXPECT_EQ(countOf(box.logText(), " p.log: Deployer | Terminated\n"), row.signals);
        EXPECT_THAT(box.logText(), EndsWith("deployer finished. Exit code: 0\n"));
    }
}

// Waits until the sandbox has become the deployer, so that a signal to the process reaches it.
void waitForStart(const Sandbox& box) {
    const auto end = Clock::now() + 10s;
    while (!box.hasFile("signal-pid") && Clock::now() < end) std::this_thread::sleep_for(200us);
}

// Waits for the moment in which the result begins to be written.
void waitForResult(const Sandbox& box, const std::string& old) {
    for (const auto end = Clock::now() + 10s; Clock::now() < end;) {
        for (const auto& file : std::filesystem::directory_iterator(box.sessionDir())) {
            const std::string name = file.path().filename();
            if (name.starts_with("migration.result") && box.resultText() != old) return;
        }
        std::this_thread::sleep_for(200us);
    }
}

// A poller that finds a result may rely on it, a status is always one that was meant, and of the
// files that were being written one at the most is left.
void expectNothingHalfDone(const Sandbox& box, const std::string& old) {
    static const std::regex known(R"(archives|restore\.xml|migration\.(log|status|result))");
    static const std::regex temporary(R"(migration\.(status|result)\w{6})");
    EXPECT_TRUE(box.statusText().empty() || isWhole(box.statusText())) << box.statusText();
    const std::string result = box.resultText();
    if (!box.journal().empty() || result != old) {
        EXPECT_TRUE(result.empty() || (isWhole(result) && result != old));
    }
    int leftOver = 0;
    for (const auto& file : std::filesystem::directory_iterator(box.sessionDir())) {
        const std::string name = file.path().filename();
        if (std::regex_match(name, known)) continue;
        EXPECT_TRUE(std::regex_match(name, temporary)) << name;
        EXPECT_EQ(++leftOver, 1);
    }
}

// Before the first call, between two, in the last one; at moments that no call marks; and while a
// long result is saved.
TEST(Killing, AtAnyMomentLeavesNothingHalfDone) {
    const std::string old = "<execution-result status=\"error\"> </execution-result>\n";
    for (const int moment : {-5, -3, -1, 0, 2, 5, 9, 14, 20, 100, 102, 104, 106}) {
        SCOPED_TRACE(moment);
        const bool isAtCall = moment < 0;
        const bool isAtResult = moment >= 100;
        Sandbox box;
        box.withoutModel();
        box.writeDump(kTwoClients);
        box.writeFile("session/migration.result", old);
        if (isAtCall) box.faults("call " + std::to_string(-moment) + ": signal-parent KILL");
        if (isAtResult) box.faults("call 1: print 4000000; exit 1");
        Process run = box.startDeployer(Sandbox::deployment());
        if (!isAtCall) {
            isAtResult ? waitForResult(box, old) : waitForStart(box);
            std::this_thread::sleep_for(moment % 100 * 1ms);
            run.signal(SIGKILL);
        }
        const int signal = run.wait().signal;
        if (isAtCall) {
            EXPECT_EQ(signal, SIGKILL);
            EXPECT_EQ(box.resultText(), "");
            EXPECT_NE(box.statusText(), "");
        }
        expectNothingHalfDone(box, old);
    }
}

TEST(Streams, ThatNobodyReadsOrThatAreClosedCostNothing) {
    for (const char* script : {"{ \"$0\" \"$@\" --debug; echo $? >$S/rc; } 2>&1 | sleep 0",
                               "\"$0\" \"$@\" <&- >&- 2>&-; echo $? >$S/rc"}) {
        SCOPED_TRACE(script);
        Sandbox box;
        box.writeDump(kTwoClients);
        box.deployIn(script);
        EXPECT_EQ(box.readFile("session/rc"), "0\n");
        EXPECT_EQ(codesOf(box), kSuccess);
        EXPECT_EQ(callsOf(box), kFiveCalls);
    }
}

// ---- disks ----

// The session on a disk of its own with little room, and how to use that up.
const std::string kSmallDisk =
    "mkdir $S/../away && mv $S/* $S/../away && mount -t tmpfs -o size=64k tmpfs $S && "
    "mv $S/../away/* $S; ";
const std::string kFill = "dd if=/dev/zero of=$S/fill bs=1k 2>/dev/null; ";
const std::string kRunAndShow = "\"$0\" \"$@\"; echo $? $(ls $S) .; cat $S/migration.status";

TEST(Disk, ThatIsFullFromTheStartStopsTheRunBeforeTheFirstCommand) {
    Sandbox box;
    box.writeDump(kTwoClients);
    const auto run = box.deployIn(kSmallDisk + kFill + kRunAndShow);
    EXPECT_THAT(run.err, HasSubstr("Uncaught ExTraceableException: tError_SaveFile: Can not save "
                                   "the XML document to file '" +
                                   Sandbox::sessionPath() + "/migration.result"));
    EXPECT_THAT(run.out, StartsWith("1 archives fill migration.log "));
    EXPECT_EQ(countOf(run.out, "migration.status ") + countOf(run.out, "migration.result "), 0);
    EXPECT_TRUE(box.journal().empty());
}

TEST(Disk, ThatFillsUpOnTheWayLeavesAWholeStatusAndNoResult) {
    Sandbox box;
    box.writeDump(dumpWithTraffic("1 2"));
    const auto run = box.deployIn(
        kSmallDisk + "T=/opt/qrd/admin/vlib/api-cli/traffic.php; rm $T; echo '#!/bin/sh\nS='$S'; " +
        kFill + "exit 0' >$T; chmod +x $T; " + kRunAndShow);
    EXPECT_THAT(run.err, HasSubstr("Uncaught ExTraceableException: tError_SaveFile"));
    EXPECT_THAT(run.out, StartsWith("1 "));
    EXPECT_EQ(countOf(run.out, "migration.result "), 0);
    const std::string status = run.out.substr(std::min(run.out.find("<?xml"), run.out.size()));
    EXPECT_TRUE(isWhole(status)) << run.out;
    EXPECT_THAT(status, HasSubstr(">bob</current-object>"));
    EXPECT_TRUE(callsOf(box).ends_with(kStatistics));
}

// ---- mail ----

// A maildir of a.example for each of the names.
std::string mailOf(const Lines& names, const std::string& type) {
    std::string users;
    for (const std::string& name : names) {
        users += "<mailuser name='" + name + "'><preferences><mailbox type='" + type +
                 "'>$content(mailbox " + name + ".tar)</mailbox></preferences></mailuser>";
    }
    return "<domain name='a.example' deployer-action='update'><mailsystem><mailusers>" + users +
           "</mailusers></mailsystem></domain>";
}

// Catches: mail that is lost without a word, with its neighbour's, or with what it came through.
TEST(Mail, ThatIsHitOnItsWayIsToldAndLeavesNothingTemporary) {
    const std::string lost = "domain a.example: CantUnpackMailboxContent > ";
    const struct {
        std::string type;
        std::string preparation;
        Lines codes;
        std::string left;
    } rows[] = {
        // A header in the middle of the archive.
        {"mdir",
         "printf %512s | dd of=$S/joe.tar bs=512 seek=2 conv=notrunc 2>/dev/null",
         {"success", lost + "UnExpectedResult"},
         "ann/Maildir/1\njoe/Maildir/1\njoe/Maildir/3\n"},
        {"mbox",
         "mv $M $M.away; mkdir $M; mount -t tmpfs -o size=32k,mode=755 tmpfs $M; "
         "mv $M.away/* $M",
         {"success", lost + "ExecCmd::Failed", lost + "ExecCmd::Failed"},
         "ann/Maildir/.1/tmp/000001.mbox\njoe/Maildir/.1/cur/000001.mbox:2,S\n"
         "joe/Maildir/.2/tmp/000002.mbox\n"},
        {"mdir",
         "mkdir $S/bin; printf '#!/bin/sh\nkill -TERM $PPID\nsleep 0.1\nexec /bin/tar \"$@\"' "
         ">$S/bin/tar; chmod +x $S/bin/tar; PATH=$S/bin:$PATH",
         kSuccess, "joe/Maildir/1\njoe/Maildir/2\njoe/Maildir/3\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.preparation);
        Sandbox box;
        const std::string message = " popuser:popuser 600 'From a\\n\\n";
        prepare(box, {"",
                      {{"before", "domain --create a.example\n"},
                       {"archive joe.tar", "1" + message + "x\\n'\n2" + message +
                                               std::string(40'000, 'x') + "'\n3" + message + "'\n"},
                       {"archive ann.tar", "1" + message + "x\\n'\n"},
                       {"dump", mailOf({"joe", "ann"}, row.type)}}});
        const auto run = box.deployIn(
            "M=/opt/qrd/var/mailnames; " + row.preparation +
            "; \"$0\" \"$@\"; ls -A /opt/qrd/RMK/tmp; cd $M/a.example; find * -type f | sort");
        EXPECT_EQ(codesOf(box), row.codes);
        EXPECT_EQ(run.out, row.left);
    }
}

// ---- the machine ----

struct BadMachine {
    std::string preparation;  // in the shell
    int status;
    std::string says;    // how standard error begins
    std::string result;  // a part of it; "old" is the one from before the run
};

TEST(Machine, ThatCannotBeWorkedOnIsLeftAlone) {
    const BadMachine rows[] = {
        {"mount --bind $S $S; mount -o remount,ro,bind $S", 1,
         "Uncaught ExTraceableException: CantCreateTempFile: Can not create temporary file "
         "with the template '" +
             Sandbox::sessionPath() + "/migration.resultXXXXXX': Read-only file system.",
         "old"},
        {"rm /opt/qrd/RMK/log4cpp.properties", 1, "Uncaught std::exception: ", "old"},
        {"sed -i /qrdadm/d /etc/passwd", 1, "Unable to find uid for user qrdadm", "old"},
        {"sed -i /qrdadm/d /etc/passwd; mkdir $S/archives", 1,
         "Uncaught ExTraceableException: CantTakeFileOwnership: Cannot take ownership of ", ""},
        {"rm /opt/qrd/RMK/restore-specification.xsd", 0, "",
         "<text>Can not allocate memory for xmlSchemaParse</text>"},
    };
    for (const BadMachine& row : rows) {
        SCOPED_TRACE(row.preparation);
        Sandbox box;
        box.writeDump(kTwoClients);
        box.writeFile("session/migration.result", "old");
        const auto run = box.deployIn(row.preparation + kRun);
        EXPECT_EQ(run.exitStatus, row.status);
        EXPECT_THAT(run.err, StartsWith(row.says));
        EXPECT_EQ(run.err.empty(), row.says.empty()) << run.err;
        EXPECT_THAT(box.resultText(), HasSubstr(row.result));
        EXPECT_EQ(box.resultText().empty(), row.result.empty());
        EXPECT_TRUE(box.journal().empty());
    }
}

TEST(Machine, WithoutTheSchemaRestoresWhatIsNotToBeChecked) {
    Sandbox box;
    box.writeDump(kTwoClients);
    box.deployIn("rm /opt/qrd/RMK/restore-specification.xsd" + kRun, "--skip-xsd");
    EXPECT_EQ(callsOf(box), kFiveCalls);
    EXPECT_EQ(codesOf(box), kSuccess);
}

}  // namespace
