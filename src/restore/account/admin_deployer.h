// Places what hangs directly below the administrator.
#pragma once

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Deploys the `admin` element: its resellers, its clients, its domains.
class AdminDeployer : public XmlDeployDocAbility {
  public:
    using XmlDeployDocAbility::act;
    // A failure of one object is told, and the next one follows.
    void act(XmlNode node) const override;

    // Each restores one element with the administrator as its owner, and raises what the deployer
    // of its kind raises.
    static void deployReseller(const XmlNode& node);
    static void deployClient(const XmlNode& node);
    static void deployDomain(const XmlNode& node);
};

}  // namespace zelvo
