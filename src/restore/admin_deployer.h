// Places what hangs directly below the administrator.
#pragma once

#include "restore/deploy_doc_ability.h"

namespace zelvo {

// Deploys the `admin` element: its resellers, its clients, its domains.
class AdminDeployer : public virtual tDeployDocAbility {
  public:
    // A failure of one object is logged, and the next one follows.
    void operator()(const XmlNode& node) const;

    void deployReseller(const XmlNode& node) const;
    void deployClient(const XmlNode& node) const;
    void deployDomain(const XmlNode& node) const;
};

}  // namespace zelvo
