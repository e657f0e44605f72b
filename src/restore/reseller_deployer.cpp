#include "restore/reseller_deployer.h"

#include "report/debug_log.h"
#include "report/error_functions.h"
#include "report/object_logger.h"
#include "restore/restore_errors.h"

namespace zelvo {

ResellerDeployer::ResellerDeployer(const std::string& name, const tDeployAction& action)
    : ClientDeployer("admin", name, action) {}

void ResellerDeployer::operator()(XmlNode node) const {
    ObjectLogger logger(name(), "reseller");
    deployClientData(node);
    if (DeployActionSummaryUpdate(action())) {
        node.foreach (
            "preferences/client-template",
            [](const XmlNode&) { throw EXC(NotSupportedOperation) % "client-template"; },
            deploy_error_func);
    }
    node.foreach (
        "clients/client", [this](const XmlNode& client) { deployClient(client); },
        deploy_error_func);
    theDebugLog->log("Restore of reseller '" + name() + "' is complete");
}

void ResellerDeployer::deployClient(const XmlNode& node) const {
    const ClientDeployer deployer(name(), node.str("@name"), tDeployAction(node));
    deployer(node);
}

}  // namespace zelvo
