#include "exec/cli_exec.h"

#include <gmock/gmock.h>

#include <tuple>
#include <utility>

#include "exec/cli_gate.h"
#include "exec/cli_gate_request.h"
#include "recording_log.h"

using namespace zelvo;

namespace {

// What comes from the gate is private, and tried here without a gate: an explicit instantiation may
// name private members, and its friend hands them out.
template <auto... members>
struct Opened {
    friend auto openCliGate() { return std::make_tuple(members...); }
};
auto openCliGate();
template struct Opened<&CliGate::status, &CliGate::response, &CliGate::headerWriter,
                       &CliGate::responseWriter>;
const auto [gateStatus, gateResponse, takeHeader, takeBody] = openCliGate();

class CliExecTest : public testing::Test {
  protected:
    CliExecTest() {
        CliExec::first_run = false;  // Nothing is looked for on this machine.
        CliExec::use_gate = true;
    }

    RecordingLog log_;
};

}  // namespace

TEST_F(CliExecTest, RunsAnUpdateOnlyWithOptions) {
    CliExec::use_gate = false;
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
}

TEST_F(CliExecTest, SendsTheWholeCommandEscaped) {
    CliExec command("/usr/panel.d/client.x.php");
    command << "a&b=c d"
            << "";
    command.setEnv("QRD_PASSWORD", "p+w");
    command.stdin.assign("x\ny\0z", 5);
    EXPECT_EQ(prepareRequestString(command),
              "ARG[0]=client.x&ARG[1]=a%26b%3Dc%20d&ARG[2]=&ENV[ALLOW_WEAK_PASSWORDS]=&"
              "ENV[LANG]=en_US.UTF-8&ENV[QRD_PASSWORD]=p%2Bw&STDIN=x%0Ay%00z");
    EXPECT_EQ(log_.lines.at(0), "Request is ready for: echo '" + command.stdin +
                                    "' | QRD_PASSWORD=p+w LANG=en_US.UTF-8 ALLOW_WEAK_PASSWORDS= "
                                    "/usr/panel.d/client.x.php 'a&b=c d' ''");
    EXPECT_EQ(command.exec(std::nothrow), 255) << "without a connection";
    EXPECT_EQ(command.retCode, 255);
    EXPECT_TRUE(command.started && !command.finished);
}

TEST_F(CliExecTest, TakesTheStatusFromItsLineAndTheBodyUpToAZeroByte) {
    const std::pair<std::string, int> rows[] = {
        {"HTTP/1.1 403 Forbidden\r\n", 403}, {"HTTP/1.1 100\r\n", 100},
        {"HTTP/1.0 200 OK\r\n", -1},         {"X: HTTP/1.1 200 OK\r\n", -1},
        {"HTTP/1.1 99999999999 X\r\n", -1},
    };
    CliGate gate;
    for (auto [line, status] : rows) {
        gate.*gateStatus = -1;
        EXPECT_EQ(takeHeader(line.data(), 1, line.size(), &gate), line.size());
        EXPECT_EQ(gate.*gateStatus, status) << line;
    }
    char body[] = "ab\0cdef";
    EXPECT_EQ(takeBody(body, 1, 5, &gate), 5U);
    EXPECT_EQ(takeBody(body + 5, 2, 1, &gate), 2U) << "not ended by a zero byte";
    EXPECT_EQ(gate.*gateResponse, "abef");
}
