// The restore of what belongs to the panel as a whole.
#pragma once

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores the `server` element of the dump.
class ServerDeployer : public XmlDeployDocAbility {
  public:
    using XmlDeployDocAbility::act;
    // Configures the panel, then takes the steps of the server's settings in their order; each has
    // a guard of its own.
    void act(XmlNode node) const override;
};

}  // namespace zelvo
