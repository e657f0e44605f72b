// A command with a trail in the debug log.
#pragma once

#include "exec/exec_cmd.h"

namespace zelvo {

// Needs theDebugLog. Nothing is masked: the log is for root's eyes, and passwords in the
// environment or in arguments stand in it in clear.
class tLogExecCmd : public ExecCmd {
  public:
    using ExecCmd::ExecCmd;

    // Logs the environment, the command and, if it succeeded, its output.
    int exec() override;
    // Logs the command, its code and, if that is not 0, its output.
    int exec(std::nothrow_t) noexcept override;
};

}  // namespace zelvo
