// Mail users with all that is theirs.
#pragma once

#include <string>

#include "content/mail_refferred.h"
#include "restore/domain/mail_name.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `mailuser` element.
class tMailuserDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8. content: gathers what is to be unpacked; must outlive the deployer.
    tMailuserDeployer(std::string domainName, DomainMailRefferred& content);

    using XmlDeployDocAbility::act;
    // Restores the mail user up to its content, which is only gathered. Raises
    // FailedMailuserDeployment for the mail user itself, ExecCmd::Failed for the virus filter, and
    // NumberConversionError for a quota that is no number; the failures of what else belongs to the
    // mail user are told.
    void act(XmlNode node) const override;

  private:
    static void deployUser(const XmlNode& node, const MailName& user);
    static void appendSettings(const XmlNode& node, CmdLine& cmd);
    static void getMailboxOpts(const XmlNode& node, CmdLine& cmd);
    // Returns whether the mail user has a redirect.
    static bool getRedirectOpts(const XmlNode& node, CmdLine& cmd);

    void deployBelongings(const XmlNode& node, const MailName& user) const;
    void gatherMailbox(const XmlNode& node, const MailName& user) const;

    std::string domainName_;
    DomainMailRefferred* content_;
};

}  // namespace zelvo
