// A panel utility: run by the panel's web server through the CLI gate, a local HTTP endpoint, or
// directly where the gate is missing. Which of the two is found out once for the whole run.
#pragma once

#include <optional>
#include <string>

#include "exec/cli_gate_errors.h"
#include "exec/log_exec_cmd.h"

namespace zelvo {

// Needs theDebugLog. Once the gate was found, a failure of the gate is a failure of the command and
// does not lead to direct execution.
class CliExec : public tLogExecCmd, public CliGateErrors {
  public:
    // path: of a panel utility. The first construction in a process looks for the gate and logs
    // what it found; that there is none is no failure.
    explicit CliExec(const std::string& path);

    // Appends an argument; behind expectOptions() it counts as an option. This declaration hides
    // the form for literals that ExecCmd has, on purpose: that one knows nothing of options.
    CliExec& operator<<(const std::string& argument) override;

    // From here on arguments are options; a command that gets none of them is not run. To be called
    // behind the fixed head of an update command.
    void expectOptions() { expectOptions_ = true; }

    // Runs the command; does nothing at all, with 0 as result, when options were expected and none
    // came. Returns retCode. Raises Failed as in direct execution; through the gate also the
    // CliGateErrors and, for an answer that is none of its documents, those of getCliGateResponse.
    int exec() override;
    // The same. Returns 0, or retCode for a command that failed, or 255 for a failure of the gate,
    // which is logged. A failed run of a child ends the process.
    int exec(std::nothrow_t) noexcept override;

    // Whether the last run gave a code of the utility's own. It did not if the utility could not be
    // started, was ended by a signal, or the gate failed; 255 always counts as the gate's.
    bool hasAnswered() const;

    // The text with its bytes percent-encoded (RFC 3986), and back up to the first zero byte.
    static std::string urlencode(const std::string& text);
    static std::string urldecode(const std::string& text);

    // False once the gate has been found missing.
    static bool use_gate;
    // True until the first command has been constructed.
    static bool first_run;
    // The panel's user on whose behalf commands run that are constructed from now on.
    static std::optional<std::string> defaultCliUser;

  private:
    bool hasNothingToDo() const { return expectOptions_ && !hasOptions_; }

    bool expectOptions_ = false;
    bool hasOptions_ = false;
};

}  // namespace zelvo
