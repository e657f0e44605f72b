#include "restore/server/server_vault.h"

#include <string>

#include "report/debug_log.h"
#include "restore/objects/site_app_vault.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

bool deployServerApplicationVault(const XmlNode& server) {
    theDebugLog->log(std::string("Server Application vault deployment"));
    bool wentThrough = true;
    forEachNode(server, "application-vault", [&wentThrough](const XmlNode& vault) {
        wentThrough = SiteAppVaultDeployer::deploy(vault) && wentThrough;
    });
    return wentThrough;
}

}  // namespace zelvo
