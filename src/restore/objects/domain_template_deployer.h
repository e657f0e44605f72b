// The restore of domain templates.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `domain-template` element.
class DomainTemplateDeployer : public XmlDeployDocAbility {
  public:
    // owner: login of the account, or "admin".
    explicit DomainTemplateDeployer(std::string owner);

    using XmlDeployDocAbility::act;
    // Makes the template unless its owner has one of that name. Raises UnsafeName,
    // ExecCmd::Failed, and AssertionFailed for an item that cannot be what it is.
    void act(XmlNode node) const override;

  private:
    std::string owner_;
};

}  // namespace zelvo
