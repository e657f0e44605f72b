#include "restore/toolbox/addresses.h"

#include "restore/toolbox/panel_command.h"

namespace zelvo {

std::map<std::string, ZelvoIp> askAddresses() {
    CliExec cmd = panelCommand("ipmanage", {"-xi"});
    cmd.exec(std::nothrow);
    return getZelvoIpInfo(cmd.stdout);
}

}  // namespace zelvo
