// The aliases of a domain: further names under which it is known.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `domain-alias` element.
class DomainAliasDeployer : public XmlDeployDocAbility {
  public:
    // domainName: the domain, in UTF-8.
    explicit DomainAliasDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Makes, changes or deletes the alias as its action word says; any other word leaves it and its
    // zones alone. Raises ExecCmd::Failed, UnsafeName for a name that the utility would take for an
    // option, and tError_XPath_CantEvaluate for an alias without a status. The failures of its
    // zones are told.
    void act(XmlNode node) const override;

  private:
    // verb: "--create" or "--update".
    void writeAlias(const XmlNode& node, const std::string& name, const std::string& verb) const;

    std::string domainName_;
};

}  // namespace zelvo
