// What the steps of one restore share beside the settings of tDeployDocAbility.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "exec/exec_cmd.h"

namespace zelvo {

// Extra arguments for utilities that would otherwise notify users: empty, or "-notify", "false".
extern std::vector<std::string> notify_arg;

// Appends these.
void appendNotifyArguments(CmdLine& cmd);

// Set when a restored object asks for the web server to be reconfigured at the end.
extern bool reconfigureWebserver;

// Set when the panel was configured for the first time by this run.
extern bool wasInitialConfiguration;

// The domain that an IP address is to show by default, by address; filled while domains are
// restored and applied at the end.
extern std::map<std::string, std::string> IPDefaultDomains;

}  // namespace zelvo
