// Mail lists of a domain.
#pragma once

#include <string>

#include "content/mail_list_refferred.h"
#include "exec/cli_exec.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `maillist` element.
class tMaillistDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8. content: gathers the archives that are to be unpacked; must outlive the
    // deployer.
    tMaillistDeployer(std::string domainName, DomainMailListRefferred& content);

    using XmlDeployDocAbility::act;
    // Creates the list, whatever the action word, with its members and its status; its archive is
    // only gathered, and only of a list for which all went well. Raises AssertionFailed for a list
    // without an owner, tError_XPath_CantEvaluate without a `status`, UnsafeName,
    // MigrationTerminatedException and what CliExec::exec raises.
    void act(XmlNode node) const override;

  private:
    void create(const XmlNode& node, const std::string& name) const;
    void addMembers(const XmlNode& node, const std::string& name) const;
    // members: "add:A,B,".
    void sendMembers(const std::string& name, const std::string& members) const;
    void setStatus(const XmlNode& node, const std::string& name) const;
    CliExec update(const std::string& name) const;

    std::string domainName_;
    DomainMailListRefferred* content_;
};

}  // namespace zelvo
