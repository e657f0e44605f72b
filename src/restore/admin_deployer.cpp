#include "restore/admin_deployer.h"

#include "report/error_functions.h"
#include "restore/domain_deployer.h"
#include "restore/reseller_deployer.h"

namespace zelvo {

void AdminDeployer::operator()(const XmlNode& node) const {
    node.foreach (
        "resellers/reseller", [this](const XmlNode& reseller) { deployReseller(reseller); },
        deploy_error_func);
    node.foreach (
        "clients/client", [this](const XmlNode& client) { deployClient(client); },
        deploy_error_func);
    node.foreach (
        "domains/domain", [this](const XmlNode& domain) { deployDomain(domain); },
        deploy_error_func);
}

void AdminDeployer::deployReseller(const XmlNode& node) const {
    const ResellerDeployer deployer(node.str("@name"), tDeployAction(node));
    deployer(node);
}

void AdminDeployer::deployClient(const XmlNode& node) const {
    const ClientDeployer deployer("admin", node.str("@name"), tDeployAction(node));
    deployer(node);
}

void AdminDeployer::deployDomain(const XmlNode& node) const {
    tDomainDeployer deployer(tDeployAction(node), node.str("@name"), "admin");
    deployer(node);
}

}  // namespace zelvo
