// The mail of a domain.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores a mail user of a domain that is restored by itself, and then its content. node: the mail
// user's element, which may have the whole archive of its content as well. domainName: in UTF-8.
// Failures are told, those of the content as the domain's; raises what
// RefferredCidCollection::Extract raises, and NumberConversionError.
void deployMailName(const XmlNode& node, const std::string& domainName);

// Restores one `catch-all` element: where mail to unknown users of the domain goes.
class tCatchAllDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8.
    explicit tCatchAllDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Raises ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

}  // namespace zelvo
