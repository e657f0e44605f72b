#include "exec/log_exec_cmd.h"

#include "report/debug_log.h"

namespace zelvo {

int tLogExecCmd::exec() {
    for (const auto& [name, value] : env) {
        std::string line = "ENV[";
        line.append(name).append("]=").append(value);
        theDebugLog->log(line);
    }
    theDebugLog->log("Executing utility: " + getString());
    ExecCmd::exec();
    theDebugLog->log(std::string("The utility succesfully executed."));
    theDebugLog->log(getReport(*this));
    return retCode;
}

int tLogExecCmd::exec(std::nothrow_t) noexcept {
    theDebugLog->log("Executing utility: " + getString());
    ExecCmd::exec(std::nothrow);
    theDebugLog->log("The utility executed with the return code " + std::to_string(retCode));
    if (retCode != 0) {
        theDebugLog->log(getReport(*this));
    }
    return retCode;
}

}  // namespace zelvo
