#include "restore/objects/site_app_pool.h"

#include <utility>

#include "report/debug_log.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

SiteAppClientDeployer::SiteAppClientDeployer(std::string client) : client_(std::move(client)) {}

void SiteAppClientDeployer::act(XmlNode node) const {
    const AppItems item = specOf(node);
    if (!findAppropriateAppItem(item)) {
        theDebugLog->log(
            std::string("Such Application Item not found in server pool. Skipping restore"));
        return;
    }
    CliExec cmd = addToPoolCommand(client_, item);
    const std::string limit = "instances-limit";
    cmd << "-instances-limit" << (node.test(limit) ? node.str(limit) : "0");
    execOrReport(cmd);
}

}  // namespace zelvo
