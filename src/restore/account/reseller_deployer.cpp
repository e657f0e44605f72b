#include "restore/account/reseller_deployer.h"

#include "report/debug_log.h"
#include "report/error_functions.h"
#include "report/object_logger.h"
#include "restore/objects/account_template.h"

namespace zelvo {

ResellerDeployer::ResellerDeployer(const std::string& name, const tDeployAction& action)
    : ClientDeployer("admin", name, action) {}

void ResellerDeployer::act(XmlNode node) const {
    const ObjectLogger logger(name(), "reseller");
    deployClientData(node);
    if (DeployActionSummaryUpdate(action())) {
        deployEach(node, "preferences/client-template", ClientTemplateDeployer(name()));
    }
    node.foreach (
        "clients/client", [this](const XmlNode& client) { deployClient(client); },
        deploy_error_func);
    theDebugLog->log("Restore of reseller '" + name() + "' is complete");
}

void ResellerDeployer::deployClient(const XmlNode& node) const { deploy(name(), node); }

}  // namespace zelvo
