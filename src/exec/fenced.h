// A command that works on an archive's content, and so for its author.
#pragma once

#include <new>
#include <string>

#include "exec/log_exec_cmd.h"

namespace zelvo {

// Runs a command behind a WriteFence around a directory, and without one, with a line in the debug
// log, where the machine grants none. directory: as openDestination takes it. Raises what that and
// the command's exec raise. Needs theDebugLog.
void execFenced(tLogExecCmd& command, const std::string& directory);
// Returns the command's code, whatever it is; a code other than 0 is in the debug log.
int execFenced(tLogExecCmd& command, const std::string& directory, std::nothrow_t);

}  // namespace zelvo
