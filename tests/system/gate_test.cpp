// Restores through the panel's gate: the same outcome as without it, each of its answers, and what
// becomes of a run whose gate changes or goes away.

#include "example_company.h"
#include "outcome.h"
#include "scenario.h"
#include "two_clients.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <chrono>
#include <filesystem>
#include <regex>
#include <thread>

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr char kBob[] = R"(<migration-dump><client name="bob"/></migration-dump>)";

// What a restore did and told, in one text.
std::string restore(bool gate, const std::string& dump, const std::string& setup,
                    const std::string& faults) {
    Sandbox box;
    box.withGate(gate);
    box.setup(setup);
    box.faults(faults);
    addExampleArchives(box);
    box.writeDump(dump);
    box.deploy();
    // The probe, and all but what is no utility of the panel.
    const auto others = static_cast<std::size_t>(countOf("\n" + callsOf(box), "\nbare "));
    EXPECT_EQ(box.gateLog().size(), gate ? 1 + box.journal().size() - others : 0U);
    return joined(box.journal()) + box.resultText() + box.panel();
}

void expectSameBothWays(const std::string& dump, const std::string& setup = "",
                        const std::string& faults = "") {
    EXPECT_EQ(restore(true, dump, setup, faults), restore(false, dump, setup, faults));
}

TEST(Gate, EndsInTheJournalAndTheResultOfADirectRun) {
    expectSameBothWays(example("restore.xml"), example("panel-before.txt"));
}

// What fails ends an account, a domain, a group of options; has input; is not thrown.
TEST(Gate, TellsFailedCommandsAsADirectRunDoes) {
    expectSameBothWays(example("restore.xml"), example("panel-before.txt"),
                       "match client --create knizhny-dom: stderr 'no\\n'; exit 3\n"
                       "match domain --create meridian.example: stdout 'a b'; exit 1\n"
                       "match domadmin --update boreal.example: exit 2\n"
                       "match traffic --add-batch-user boreal: stdout so; stderr '<&>'; exit 4\n"
                       "match ip_pool --add 192.0.2.20: exit 7\n"
                       "match objectInfo: stderr gone; exit 1\n"
                       "match client --remove left-last-year: signal SEGV\n");
}

TEST(Gate, CarriesEveryCharacterThatAnArgumentCanHold) {
    std::string all;
    for (int c = 32; c < 127; ++c) all += "&#" + std::to_string(c) + ";";
    all += "&#10;&#9;&#13;a+b=c&amp;d%20e%zz \xC3\xBC\xE2\x82\xAC\xF0\x9F\x90\x98 ";
    expectSameBothWays("<migration-dump><client name=\"bob\" contact=\"" + all +
                       "\"><properties><password type=\"plain\">" + all +
                       "</password></properties><traffic>" + all +
                       "\n</traffic></client></migration-dump>");
}

TEST(Gate, IsAskedInTheseWords) {
    Sandbox box;
    box.withGate();
    box.setup("client --create 'b b'\n");
    box.writeDump(R"(<migration-dump><client name="b b" deployer-action="update"><properties>)"
                  R"(<password type="plain">p&amp;w</password></properties><traffic>1 2</traffic>)"
                  "</client></migration-dump>");
    box.deploy();
    static const std::regex head("[-0-9]{10} [:.0-9]{12} INFO p\\.log: ");
    EXPECT_THAT(std::regex_replace(box.logText(), head, ""),
                HasSubstr(std::regex_replace(
                    R"(Attempt to detect available CLI execution interfaces
HTTP status code is: 400
CLI gate is available
Request is ready for: QRD_PASSWORD=p@w LANG=en_US.UTF-8 ALLOW_WEAK_PASSWORDS= /opt/qrd/admin/vlib/api-cli/client.php '--update' 'b b' '-login' 'b b' '-passwd' ''
Request string: ARG[0]=client@ARG[1]=--update@ARG[2]=b b@ARG[3]=-login@ARG[4]=b b@ARG[5]=-passwd@ARG[6]=@ENV[ALLOW_WEAK_PASSWORDS]=@ENV[LANG]=en_US.UTF-8@ENV[QRD_PASSWORD]=p@w@STDIN=
HTTP status code is: 200
HTTP response: <cli><ok/><return>0</return><stdout></stdout><stderr></stderr></cli>

Request is ready for: echo '1 2' | LANG=en_US.UTF-8 ALLOW_WEAK_PASSWORDS= /opt/qrd/admin/vlib/api-cli/traffic.php '--add-batch-user' 'b b'
Request string: ARG[0]=traffic@ARG[1]=--add-batch-user@ARG[2]=b b@ENV[ALLOW_WEAK_PASSWORDS]=@ENV[LANG]=en_US.UTF-8@STDIN=1 2
HTTP status code is: 200
HTTP response: <cli><ok/><return>0</return><stdout></stdout><stderr></stderr></cli>

Restore of client 'b b' is complete
)",
                    std::regex("@"), "&")));
}

// ---- answers ----

TEST(Gate, AnswersAreToldAsWhatTheyAre) {
    const std::string error = "ExecCliGate::InternalServerError Internal server error: ";
    const std::string gate = "ExecCliGate::GateError Error during CLI Gate interface usage: ";
    // The fault of the request that would create bob, and the failure that ends bob; empty when
    // nothing is told.
    const std::pair<std::string, std::string> rows[] = {
        {"status 400; body '<cli><failure>no &lt;name&gt;</failure></cli>'",
         "ExecCliGate::BadRequest Bad Request: no <name>\n"},
        {"status 403; body '<cli><failure>who?</failure></cli>'",
         "ExecCliGate::PermissionDenied Permission denied: who?\n"},
        {"status 500; body 'it <broke'", error + "it <broke\n"},
        {"status 500; body '<cli><ok/></cli>'", error + "<cli><ok/></cli>\n"},
        {"body '<cli><ok/><return>7</return><stdout>so</stdout><stderr>no\\n</stderr></cli>'",
         "ExecCmd::Failed: client --create bob -name bob -notify false -passwd  -owner admin => 7 "
         "| "
         "Stdout is\\nso\\nStderr is\\nno\\n\n"},
        {"body '<cli><ok/><return>4294967296</return></cli>'",
         gate + "The return code in the answer is not a number\n"},
        {"body '<html/>'",
         "tError_WrongDoc The document has the wrong type, root node is <html>, "
         "but <cli> was expected\n"},
        {"body 'hello'", "tError_ParseFile The XML file - was not parsed successfully"},
        {"body ''", "AssertionFailed Assertion failed: content.size()\n"},
        // A connection that has served before is tried anew, so this needs two.
        {"drop\nrequest 3: drop", gate},
        {"status 302; body '<cli><ok/><return>7</return></cli>'", ""},
        {"status 200; body '<cli><failure>no</failure></cli>'", ""},
    };
    for (const auto& [fault, told] : rows) {
        SCOPED_TRACE(fault);
        Sandbox box;
        box.withGate();
        box.withoutModel();
        box.writeDump(kTwoClients);
        box.gateFaults("request 2: " + fault);
        box.deploy();
        // The failed request alone is lost: nothing is run directly in its place.
        EXPECT_EQ(callsOf(box), (told.empty() ? updateOf("bob") : "") + createOf("eve", 1) +
                                    updateOf("eve") + kStatistics);
        const std::string failure = "client bob\n  FailedClientDeployment: bob\n    ";
        EXPECT_THAT(outcomeOf(box), StartsWith("success\n" + (told.empty() ? "" : failure + told)));
        EXPECT_EQ(codesOf(box).size(), told.empty() ? 1U : 2U);
    }
}

// ---- a gate that changes ----

TEST(Gate, ThatVanishesIsNotReplacedByDirectRuns) {
    Sandbox box;
    box.withGate();
    box.writeDump(R"(<migration-dump><client name="bob"><domains><domain name="a.com"/></domains>)"
                  R"(</client><client name="eve"/><domain name="b.com" owner-guid="g"/>)"
                  "</migration-dump>");
    box.gateFaults("request 3+: exit");
    box.deploy();
    EXPECT_EQ(codesOf(box),
              Lines({"success", "client bob: FailedClientDeployment > ExecCliGate::GateError",
                     "client bob/domain a.com: FailedDomainDeployment > ExecCliGate::GateError",
                     "client eve: FailedClientDeployment > ExecCliGate::GateError",
                     ": UnknownParentClassObject"}));
    EXPECT_EQ(callsOf(box), createOf("bob", 1) + kStatistics);
    EXPECT_EQ(box.gateLog(), Lines({"1 400", "2 200 client"}));
}

TEST(Gate, HearsANewPasswordFromTheNextRequestOn) {
    const std::string shadow = "etc/qrd/.qrd.shadow";
    Sandbox box;
    box.withGate();
    box.writeDump(kTwoClients);
    box.writeFile(shadow, "the first\nand no second line\n");
    std::filesystem::last_write_time(box.statePath() + "/" + shadow,
                                     std::filesystem::file_time_type::min());
    box.faults("call 2: sleep 400");
    Process run = box.startDeployer(Sandbox::deployment());
    for (int tries = 0; tries < 5000 && box.journal().size() < 2; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    box.writeFile(shadow, "the second");
    EXPECT_EQ(run.wait().exitStatus, 0);
    EXPECT_EQ(codesOf(box), Lines({"success"}));
    EXPECT_EQ(box.gateLog(),
              Lines({"1 400", "2 200 client", "3 200 client", "4 200 client", "5 200 client"}));
}

TEST(Gate, ThatAnswersTheProbeWith200CountsAsMissing) {
    Sandbox box;
    box.withGate();
    box.writeDump(kBob);
    box.gateFaults("request 1: status 200; body hello");
    box.deploy();
    for (const char* line : {"Cli gate is not available: status(200) HTTP response: hello\n",
                             "CLI gate is NOT available\n",
                             "ExecCliGate::GateError: Error during CLI Gate interface usage: "
                             "Unexpected response from CLI gate [./exec/cli_gate.cpp:"}) {
        EXPECT_THAT(box.logText(), HasSubstr(line));
    }
    EXPECT_EQ(box.gateLog(), Lines({"1 200"}));
    EXPECT_EQ(box.journal().size(), 3U);
}

TEST(Gate, IsNotUsedWithoutAPassword) {
    Sandbox box;
    box.withGate();
    box.writeDump(kBob);
    const auto run = box.deployIn("rm /etc/qrd/.qrd.shadow; exec \"$0\" \"$@\"");
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.err, StartsWith("Can not obtain admin's password to access CLI Gate\n"));
    EXPECT_EQ(run.out, run.err);
    EXPECT_THAT(box.logText(), HasSubstr("CLI gate is NOT available\n"));
    EXPECT_TRUE(box.gateLog().empty());
    EXPECT_EQ(box.journal().size(), 3U);
}

}  // namespace
