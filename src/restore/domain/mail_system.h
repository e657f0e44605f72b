// The mail of a domain.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores mail users, and their content once all of them are there. node: the element that may
// have the whole archive of their content. users: the expression that finds them below it.
// domainName: in UTF-8. The failure of one mail user, or of a content, is told; raises what
// RefferredCidCollection::Extract raises, and NumberConversionError.
void deployMailUsers(const XmlNode& node, const std::string& users, const std::string& domainName);

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
