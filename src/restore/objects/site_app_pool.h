// The clients' pools of site applications.
#pragma once

#include <string>

#include "restore/objects/site_apps.h"

namespace zelvo {

// Restores a `sapp-pool/sapp-item` element of a client or reseller.
class SiteAppClientDeployer : public SiteAppsDeployer {
  public:
    // client: the login of the account.
    explicit SiteAppClientDeployer(std::string client);

    using XmlDeployDocAbility::act;
    // Gives the account the item; one that the server's pool lacks is passed over, which the debug
    // log tells. Raises UnsafeName, what findAppropriateAppItem raises, and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string client_;
};

}  // namespace zelvo
