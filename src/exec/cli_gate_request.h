// What is sent to the CLI gate: a command as a form, such as a browser would send it.
#pragma once

#include <string>

namespace zelvo {

class ExecCmd;

// Returns the body of the request that has the gate run the command: the utility's name, the
// arguments, the environment and standard input as fields. Logs the command as a line of shell
// text, so it needs theDebugLog.
std::string prepareRequestString(const ExecCmd& command);

}  // namespace zelvo
