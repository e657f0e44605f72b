#include "exec/cli_exec.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "gate_server.h"
#include "recording_log.h"

using namespace zelvo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// The gate is looked for once in a process, so every test has a process of its own.
class CliExecTest : public testing::Test {
  protected:
    void SetUp() override {
        if (getuid() != 0) {
            GTEST_SKIP() << "only root can make the gate's surroundings";
        }
    }
};

const Answer kReady = answer(400, "<cli><failure>No arguments</failure></cli>");

std::string okDocument(const std::string& code, const std::string& out = "",
                       const std::string& err = "") {
    return "<cli><ok/><return>" + code + "</return><stdout>" + out + "</stdout><stderr>" + err +
           "</stderr></cli>";
}

// The code of the failure of a command, its message in log; "" when it does not fail.
std::string failureCode(CliExec& command, RecordingLog& log) {
    try {
        command.exec();
        return "";
    } catch (const ExTraceable& failure) {
        log.lines.clear();
        log.log(failure);
        return log.lines.at(0).substr(0, log.lines.at(0).find(": "));
    }
}

}  // namespace

TEST_F(CliExecTest, RunsDirectlyWithoutGate) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        writePassword("secret", 1000);
        CliExec::defaultCliUser = "bob";
        CliExec command("/bin/sh");
        EXPECT_FALSE(CliExec::use_gate);
        EXPECT_THAT(
            log.lines,
            ElementsAre(
                "Attempt to detect available CLI execution interfaces", "CLI gate is NOT available",
                testing::StartsWith("failure ExecCliGate::GateError: Error during CLI Gate "
                                    "interface usage: Failed to connect to 127.0.0.1 port 8880")));
        log.lines.clear();
        command << "-c"
                << "echo $LANG ${ALLOW_WEAK_PASSWORDS-unset} $ZELVO_SUID; exit 4";
        EXPECT_EQ(command.exec(std::nothrow), 4);
        EXPECT_EQ(command.stdout, "en_US.UTF-8 bob\n");
        EXPECT_THAT(log.lines, ElementsAre("ENV[ALLOW_WEAK_PASSWORDS]=", "ENV[LANG]=en_US.UTF-8",
                                           "ENV[ZELVO_SUID]=bob", HasSubstr("/bin/sh -c echo")));
        EXPECT_EQ(CliExec("/bin/true").exec(), 0) << "the gate is looked for only once";
    }));
}

TEST_F(CliExecTest, RunsAnUpdateOnlyWithOptions) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        const CliExec fresh("/bin/false");
        CliExec command(fresh);
        command << "--update"
                << "bob";
        command.expectOptions();
        log.lines.clear();
        EXPECT_EQ(command.exec(), 0);
        EXPECT_EQ(command.exec(std::nothrow), 0);
        EXPECT_THAT(log.lines, IsEmpty());
        EXPECT_FALSE(command.started);
        command.ExecCmd::operator<<("direct");
        EXPECT_EQ(command.exec(std::nothrow), 0) << "the base's form for literals arms nothing";
        CmdLine& appender = command;
        appender << "-option";
        EXPECT_EQ(command.exec(std::nothrow), 1);
        command = fresh;
        EXPECT_EQ(command.getString(), "/bin/false");
        EXPECT_EQ(command.exec(std::nothrow), 1) << "a fresh command expects no options";
    }));
}

TEST_F(CliExecTest, NeedsAPasswordFile) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        const CliExec command("/bin/true");
        EXPECT_FALSE(CliExec::use_gate);
        EXPECT_EQ(log.lines.at(2),
                  "failure ExecCliGate::GateError: Error during CLI Gate interface usage: Can not "
                  "obtain admin's password to access CLI Gate");
    }));
}

TEST_F(CliExecTest, TakesAServerThatAnswers200ForNoGate) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        writePassword("secret", 1000);
        const GateServer server({answer(200, "hello")});
        EXPECT_EQ(CliExec("/bin/true").exec(std::nothrow), 0);
        log.lines.resize(5);
        EXPECT_THAT(log.lines,
                    ElementsAre("Attempt to detect available CLI execution interfaces",
                                "HTTP status code is: 200",
                                "Cli gate is not available: status(200) HTTP response: hello",
                                "CLI gate is NOT available",
                                "failure ExecCliGate::GateError: Error during CLI Gate interface "
                                "usage: Unexpected response from CLI gate"));
    }));
}

TEST_F(CliExecTest, SendsTheWholeCommandEscaped) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        writePassword("secret", 1000);
        GateServer server({kReady, answer(200, okDocument("0", "a&lt;b", "e"))});
        CliExec command("/usr/local/panel.d/api-cli/client.x.php");
        EXPECT_TRUE(CliExec::use_gate);
        EXPECT_THAT(log.lines, ElementsAre("Attempt to detect available CLI execution interfaces",
                                           "HTTP status code is: 400", "CLI gate is available"));
        log.lines.clear();
        command << "--create"
                << "a&b=c d"
                << "";
        command.setEnv("QRD_PASSWORD", "p+w");
        command.stdin = "x\ny";
        EXPECT_EQ(command.exec(), 0);
        EXPECT_EQ(command.stdout, "a<b");
        EXPECT_EQ(command.stderr, "e");
        EXPECT_TRUE(command.started && command.finished);
        const Request request = server.requests().at(1);
        EXPECT_EQ(server.requests().at(0).method, "GET");
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.password, "secret");
        EXPECT_EQ(request.body,
                  "ARG[0]=client.x&ARG[1]=--create&ARG[2]=a%26b%3Dc%20d&ARG[3]=&"
                  "ENV[ALLOW_WEAK_PASSWORDS]=&ENV[LANG]=en_US.UTF-8&"
                  "ENV[QRD_PASSWORD]=p%2Bw&STDIN=x%0Ay");
        EXPECT_THAT(
            log.lines,
            ElementsAre("Request is ready for: echo 'x\ny' | QRD_PASSWORD=p+w LANG=en_US.UTF-8 "
                        "ALLOW_WEAK_PASSWORDS= /usr/local/panel.d/api-cli/client.x.php "
                        "'--create' 'a&b=c d' ''",
                        "Request string: ARG[0]=client.x&ARG[1]=--create&ARG[2]=a&b=c d&ARG[3]=&"
                        "ENV[ALLOW_WEAK_PASSWORDS]=&ENV[LANG]=en_US.UTF-8&ENV[QRD_PASSWORD]=p+w&"
                        "STDIN=x\ny",
                        "HTTP status code is: 200",
                        "HTTP response: <cli><ok/><return>0</return><stdout>a&lt;b</stdout>"
                        "<stderr>e</stderr></cli>"));
    }));
}

TEST_F(CliExecTest, TellsEachAnswerOfTheGate) {
    const std::string refusal = "<cli><failure>go away</failure></cli>";
    const struct {
        Answer reply;
        const char* code;
        const char* message;
        int nothrowCode;
    } rows[] = {
        {answer(500, "boom"), "failure ExecCliGate::InternalServerError",
         "Internal server error: boom", 255},
        {answer(400, refusal), "failure ExecCliGate::BadRequest", "Bad Request: go away", 255},
        {answer(403, refusal), "failure ExecCliGate::PermissionDenied",
         "Permission denied: go away", 255},
        {answer(403, "no document"), "failure tError_ParseFile", "", 255},
        {answer(200, ""), "failure AssertionFailed", "content.size()", 255},
        {answer(200, "<other/>"), "failure tError_WrongDoc", "", 255},
        {answer(200, okDocument("0")), "", "", 0},
        {answer(302, okDocument("7")), "", "", 0},
        {answer(200, okDocument("7", "out")), "failure ExecCmd::Failed",
         "Execution of /x/tool.php failed with return code 7.\nStdout is\nout\n", 7},
        {{"HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 403 No\r\n", refusal},
         "failure ExecCliGate::PermissionDenied",
         "",
         255},
        {{"HTTP/1.0 200 OK\r\n", okDocument("7")}, "", "", 0},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(passesInNamespace([&] {
            RecordingLog log;
            writePassword("secret", 1000);
            const GateServer server({kReady, row.reply, row.reply});
            CliExec command("/x/tool.php");
            EXPECT_EQ(failureCode(command, log), row.code);
            if (*row.code != '\0') {
                EXPECT_THAT(log.lines.at(0), HasSubstr(row.message));
            }
            EXPECT_EQ(CliExec("/x/tool.php").exec(std::nothrow), row.nothrowCode);
        })) << row.reply.head
            << row.reply.body;
    }
}

TEST_F(CliExecTest, TakesAReturnCodeThatIsNoNumberForAFailureOfTheGate) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        writePassword("secret", 1000);
        const GateServer server({kReady, answer(200, okDocument("none"))});
        EXPECT_EQ(CliExec("/x/tool.php").exec(std::nothrow), 255);
        EXPECT_THAT(log.lines.back(), HasSubstr("bad lexical cast"));
    }));
}

TEST_F(CliExecTest, SendsAPasswordThatChangedInTheRun) {
    EXPECT_TRUE(passesInNamespace([] {
        RecordingLog log;
        const Answer done = answer(200, okDocument("0"));
        GateServer server({kReady, done, done});
        writePassword("old", 1000);
        CliExec command("/x/tool.php");
        writePassword("unseen", 1000);
        command.exec();
        writePassword("new", 2000);
        command.exec();
        std::vector<std::string> passwords;
        for (const Request& request : server.requests()) {
            passwords.push_back(request.password);
        }
        EXPECT_THAT(passwords, ElementsAre("old", "old", "new"));
    }));
}

TEST_F(CliExecTest, StaysWithAGateThatVanishes) {
    for (const bool isCutShort : {true, false}) {
        EXPECT_TRUE(passesInNamespace([&] {
            RecordingLog log;
            writePassword("secret", 1000);
            Answer last = answer(200, okDocument("0"));
            last.isCutShort = isCutShort;
            if (!isCutShort) {
                last.head.clear();
            }
            const GateServer server({kReady, last});
            for (int i = 0; i < 2; ++i) {
                CliExec command("/bin/true");
                EXPECT_EQ(failureCode(command, log), "failure ExecCliGate::GateError");
                EXPECT_FALSE(command.finished);
            }
            EXPECT_TRUE(CliExec::use_gate);
        }));
    }
}

TEST(UrlEncoding, IsUndoneByDecoding) {
    std::string text;
    for (int byte = 1; byte < 256; ++byte) {
        text += static_cast<char>(byte);
    }
    const std::string encoded = CliExec::urlencode(text);
    EXPECT_EQ(encoded.find_first_of("&= +\n"), std::string::npos);
    EXPECT_EQ(CliExec::urldecode(encoded), text);
    EXPECT_EQ(CliExec::urlencode(""), "");
    EXPECT_EQ(CliExec::urlencode(std::string("a\0b", 3)), "a%00b");
}
