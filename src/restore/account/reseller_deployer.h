// Restores one reseller of the panel: the account and the clients below it.
#pragma once

#include <string>

#include "restore/account/client_deployer.h"

namespace zelvo {

// Deploys one `reseller` element. A reseller is always below the administrator.
class ResellerDeployer : public ClientDeployer {
  public:
    // name: the reseller's login.
    ResellerDeployer(const std::string& name, const tDeployAction& action);

    std::string GetClientCliUtil() const override { return "reseller"; }
    std::string GetClientCliPrefUtil() const override { return "reseller_pref"; }

    using ClientDeployer::act;
    // Restores the account, its domains and its clients; as for a client.
    void act(XmlNode node) const override;

    // Restores one `client` element below this reseller.
    void deployClient(const XmlNode& node) const;
};

}  // namespace zelvo
