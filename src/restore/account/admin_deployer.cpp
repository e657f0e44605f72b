#include "restore/account/admin_deployer.h"

#include "report/error_functions.h"
#include "restore/account/client_deployer.h"
#include "restore/account/reseller_deployer.h"
#include "restore/domain/domain_deployer.h"

namespace zelvo {

void AdminDeployer::act(XmlNode node) const {
    node.foreach ("resellers/reseller", deployReseller, deploy_error_func);
    node.foreach ("clients/client", deployClient, deploy_error_func);
    node.foreach ("domains/domain", deployDomain, deploy_error_func);
}

void AdminDeployer::deployReseller(const XmlNode& node) {
    ResellerDeployer(node.str("@name"), tDeployAction(node)).act(node);
}

void AdminDeployer::deployClient(const XmlNode& node) { ClientDeployer::deploy("admin", node); }

void AdminDeployer::deployDomain(const XmlNode& node) { tDomainDeployer::deploy("admin", node); }

}  // namespace zelvo
