#include "restore/toolbox/run_settings.h"

namespace zelvo {

std::vector<std::string> notify_arg;
bool reconfigureWebserver = false;
bool wasInitialConfiguration = false;
std::map<std::string, std::string> IPDefaultDomains;

void appendNotifyArguments(CmdLine& cmd) {
    for (const std::string& argument : notify_arg) {
        cmd << argument;
    }
}

}  // namespace zelvo
