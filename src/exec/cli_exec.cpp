#include "exec/cli_exec.h"

#include "exec/cli_gate.h"
#include "exec/cli_gate_request.h"
#include "exec/url_encoding.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

// What a utility cannot return: the gate failed.
constexpr int kGateFailed = 255;

// The one connection of the process. It is never closed: whatever ends the process, in the middle
// of a request too, leaves it alone.
CliGate& theGate() {
    static CliGate& gate = *new CliGate;
    return gate;
}

void detectGate() {
    theDebugLog->log(std::string("Attempt to detect available CLI execution interfaces"));
    CliExec::first_run = false;
    try {
        theGate().initConnection();
        theDebugLog->log(std::string("CLI gate is available"));
    } catch (const ExTraceable& failure) {
        theDebugLog->log(std::string("CLI gate is NOT available"));
        CliExec::use_gate = false;
        theDebugLog->log(failure);
    }
}

}  // namespace

bool CliExec::use_gate = true;
bool CliExec::first_run = true;
std::optional<std::string> CliExec::defaultCliUser;

CliExec::CliExec(const std::string& path) : tLogExecCmd(path) {
    setEnv("LANG", "en_US.UTF-8");
    setEnv("ALLOW_WEAK_PASSWORDS", "");
    if (defaultCliUser) {
        setEnv("ZELVO_SUID", *defaultCliUser);
    }
    if (first_run) {
        detectGate();
    }
}

CliExec& CliExec::operator<<(const std::string& argument) {
    hasOptions_ = hasOptions_ || expectOptions_;
    tLogExecCmd::operator<<(argument);
    return *this;
}

int CliExec::exec() {
    if (hasNothingToDo()) {
        return 0;
    }
    if (!use_gate) {
        return tLogExecCmd::exec();
    }
    started = true;
    theGate().makePostRequest(prepareRequestString(*this));
    theGate().analyzeResponse(*this);
    return retCode;
}

int CliExec::exec(std::nothrow_t) noexcept {
    if (hasNothingToDo()) {
        return 0;
    }
    try {
        exec();
        return 0;
    } catch (const Exc<&ExecCmd::Failed>&) {
        return retCode;
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
    }
    return retCode = kGateFailed;
}

bool CliExec::hasAnswered() const {
    return finished && !couldNotStart && retCode >= 0 && retCode != kGateFailed;
}

std::string CliExec::urlencode(const std::string& text) { return zelvo::urlencode(text); }

std::string CliExec::urldecode(const std::string& text) { return zelvo::urldecode(text); }

}  // namespace zelvo
