// The command line as its callers see it: status, streams, result and what is left on the disk.

#include "outcome.h"
#include "scenario.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kSession = Sandbox::sessionPath();
const std::string kAt = "--session-path=" + kSession;
constexpr char kHelp[] = "deployer. Zelvo Migration Manager.";
constexpr char kBob[] = R"(<migration-dump><client name="bob"><properties>)"
                        R"(<password type="plain">s3cret</password></properties></client>)"
                        R"(<client name="eve"/></migration-dump>)";

// ---- how runs end ----

// A result as its status and its codes; "old" is the one from before the run.
const Lines kOld{"old"};
const Lines kGone{};
const Lines kSuccess{"success"};

struct Ending {
    std::string arguments;  // in words; "@" stands for the session
    int status;
    std::string says;  // how the one stream begins that is not empty
    Lines result;
    std::size_t calls = 0;  // that were made
    std::string dump = kBob;
};

void expectEnding(const Ending& row) {
    Lines arguments;
    std::istringstream words(std::regex_replace(row.arguments, std::regex("@"), kAt));
    for (std::string word; words >> word;) arguments.push_back(word);
    Sandbox box;
    box.writeDump(row.dump);
    box.writeFile("session/migration.result", "old");
    const auto run = box.run(arguments);
    EXPECT_EQ(run.exitStatus, row.status);
    const bool isAnswer = row.says == kHelp;
    const std::string& said = isAnswer ? run.out : run.err;
    EXPECT_THAT(said, StartsWith(row.says));
    EXPECT_EQ(said.empty(), row.says.empty()) << said;
    EXPECT_EQ(isAnswer ? run.err : run.out, "");
    const Lines result = !box.hasFile("session")     ? kGone
                         : box.resultText() == "old" ? kOld
                                                     : codesOf(box);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(box.journal().size(), row.calls);
}

TEST(CommandLine, EndsAsCallersExpect) {
    const std::string noAction = "Action is not specified. See --help\n";
    const std::string noSession = "--session-path is required.\n";
    const std::string failure = "Uncaught ExTraceableException: ";
    const std::string self = Sandbox::deployer() + ": ";
    const std::string unknown = "<migration-dump><nothing/></migration-dump>";
    const std::string noNumber =
        R"(<migration-dump><domain name="a.com"><limits-and-permissions><limit name="disk_space">)"
        "abc</limit></limits-and-permissions></domain></migration-dump>";
    // Catches: a run that dies of content that is not there, or that passes over it.
    const std::string inRepository =
        R"(<migration-dump><domain name="a.example"><phosting deployer-action="auxiliary">)"
        R"(<content><cid type="logs"><content-file>x.tar</content-file></cid></content>)"
        "</phosting></domain></migration-dump>";
    const Ending rows[] = {
        {"--help", 0, kHelp, kOld},
        {"--help @ --suspend", 0, kHelp, kOld},
        {"", 1, noAction, kOld},
        {"@ --notify stray", 1, noAction, kOld},
        // The session is asked for whatever the action, and the last one counts.
        {"--deploy-dump", 1, noSession, kOld},
        {"--deploy-dump @ --session-path=", 1, noSession, kOld},
        {"--deploy-dump --session-path= @", 0, "", kSuccess, 5},
        {"--get-agents-list", 1, noSession, kOld},
        {"--help --deploy-dump", 1, noSession, kOld},
        {"--deploy-dump @/restore.xml", 1,
         failure + "UnableToCreateSession: Unable to create session: Unable to create session "
                   "directory [./commons/session.cpp:",
         kOld},
        {"--deploy-dump @/restore.xml/x", 1, failure + "UnableToCreateSession: ", kOld},
        {"--translate-dump @", 0, "", {"error", ": AgentNotFound"}},
        {"--deploy-dump @", 0, "", kSuccess, 5},
        {"--deploy-dump @/", 0, "", kSuccess, 5},
        {"--dep --sess " + kSession + " --no-r --repository-u ftp://x/y", 0, "", kSuccess, 5},
        {"--deploy-dump --force -v @", 0,
         self + "unrecognized option '--force'\n" + self + "invalid option -- 'v'\n", kSuccess, 5},
        {"--deploy-dump --repository x @", 0, self + "option '--repository' is ambiguous", kSuccess,
         5},
        {"--deploy-dump @ --agent-name", 0, self + "option '--agent-name' requires", kSuccess, 5},
        // Failures that are told in the result, and one that cannot be.
        {"--deploy-dump @", 0, "", {"error", ": tError_ParseFile"}, 0, "<migration-dump"},
        {"--deploy-dump @", 0, "", {"error", ": InternalDtdValidationFailed"}, 0, unknown},
        {"--deploy-dump @ --skip-xsd", 0, "", kSuccess, 1, unknown},
        {"--deploy-dump @ --skip-xsd", 1, "Uncaught std::exception: ", {"error"}, 1, noNumber},
        {"--deploy-dump @",
         0,
         "",
         {"success", "domain a.example/hosting a.example: CantUnpackLogs > CantUnpack"},
         3,
         inRepository},
        // More than one action is none, and that works out.
        {"--help --deploy-dump @", 0, "", kSuccess},
        {"--deploy-dump --deploy-dump @", 0, "", kSuccess},
        {"--delete-session --delete-session @", 0, "", kSuccess},
        {"--delete-session @", 1,
         failure + "CantCreateTempFile: Can not create temporary file with the template '" +
             kSession + "/migration.resultXXXXXX': No such file or directory. [./",
         kGone},
    };
    for (const Ending& row : rows) {
        SCOPED_TRACE(row.arguments + " " + row.dump);
        expectEnding(row);
    }
}

// ---- what is left on the disk ----

std::string ownersAndModes(Sandbox& box, const std::string& files) {
    return box
        .runCommand({"/bin/sh", "-c", "cd " + kSession + "/..; stat -c '%n %u:%g %a' " + files})
        .out;
}

TEST(Session, IsMadeWithAllItsLevelsForRootAndThePanel) {
    Sandbox box;
    box.run({"--deploy-dump", "--session-path", kSession + "/../deep/er/session"});
    EXPECT_EQ(ownersAndModes(box, "deep deep/er deep/er/session deep/er/session/*"),
              "deep 0:2110 750\ndeep/er 0:2110 750\ndeep/er/session 0:2110 750\n"
              "deep/er/session/archives 0:2110 750\n"
              "deep/er/session/migration.log 0:0 600\n"
              "deep/er/session/migration.result 2110:2120 600\n"
              "deep/er/session/migration.status 2110:2120 600\n");
}

TEST(Session, ThatExistsStaysAsItIs) {
    const std::string mine = "session session/archives session/archives/private/x session/dump.xml";
    Sandbox box;
    box.writeDump(kBob);
    box.writeFile("session/archives/private/x", "archive");
    box.writeFile("session/dump.xml", "not read");
    ownersAndModes(box, mine + "; chown -R 7:8 session; chmod 711 session session/archives");
    const std::string before = ownersAndModes(box, mine);
    EXPECT_THAT(before, StartsWith("session 7:8 711\nsession/archives 7:8 711\n"));
    box.deploy();
    box.deploy();
    EXPECT_EQ(ownersAndModes(box, mine), before);
    EXPECT_EQ(box.readFile("session/dump.xml"), "not read");
    EXPECT_EQ(countOf(box.logText(), "deployer started : "), 2);
}

// ---- what a run says of itself ----

TEST(Log, GoesToStandardErrorOnlyWithDebug) {
    Sandbox box;
    box.writeDump(kBob);
    const std::string begin = " INFO p.log: deployer started : " + Sandbox::deployer() + " ";
    const std::string validation = "DEBUG p.deployer: Validate dump";
    const std::string end = " INFO p.log: deployer finished. Exit code: 0\n";
    const std::string rest = "--verbose --repository-pwd pass\\ word\\$1 " + kAt + " stray\n";
    EXPECT_EQ(box.succeeds({"--deploy-dump", "--verbose", "--repository-pwd", "pass word$1", kAt,
                            "stray"})
                  .out,
              "");
    for (const std::string& line : {begin + "--deploy-dump " + rest,
                                    std::string(" INFO p.log: Migration finished\n"), validation}) {
        EXPECT_THAT(box.logText(), HasSubstr(line));
    }
    EXPECT_THAT(box.logText(), EndsWith(end));
    const auto run = box.run({"--deploy-dump", "--debug", "--verbose", kAt});
    EXPECT_EQ(run.out, "");
    const std::string specification =
        validation + " using restore specification: /opt/qrd/RMK/restore-specification.xsd\n";
    for (const std::string& line :
         {begin, std::string("ENV[LANG]=en_US.UTF-8\n"), specification, end}) {
        EXPECT_THAT(run.err, HasSubstr(line));
    }
}

TEST(Log, IsTheOnlyPlaceThatHoldsPasswords) {
    Sandbox box;
    box.writeDump(kBob);
    box.faults("match client: stdout 'so'; stderr 'no'; exit 1");
    box.deploy("--verbose");  // with nothing on standard error
    EXPECT_THAT(box.logText(), HasSubstr("ENV[QRD_PASSWORD]=s3cret\n"));
    EXPECT_THAT(box.resultText() + box.statusText(), Not(HasSubstr("s3cret")));
}

}  // namespace
