// The automatic answers of a mail user, with what they send along.
#pragma once

#include <string>

#include "content/mail_refferred.h"
#include "restore/domain/mail_name.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// All have the collection gather content, which must outlive them.

// Restores one `autoresponders` element: the answers of a mail user, and whether they are on.
class AutorespondersDeployer : public XmlDeployDocAbility {
  public:
    AutorespondersDeployer(MailName user, DomainMailRefferred& content);

    using XmlDeployDocAbility::act;
    // Raises UnsafeName, and ExecCmd::Failed for the switch; the failures of single answers and
    // attachments are told.
    void act(XmlNode node) const override;

  private:
    MailName user_;
    DomainMailRefferred* content_;
};

// Restores one `autoresponder` element: an answer.
class AutoresponderDeployer : public XmlDeployDocAbility {
  public:
    AutoresponderDeployer(MailName user, DomainMailRefferred& content);

    using XmlDeployDocAbility::act;
    // Raises UnsafeName for a name that looks like an option, and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    void createOrUpdate(const XmlNode& node, const std::string& name) const;
    void gatherAttachments(const XmlNode& node, const std::string& name) const;

    MailName user_;
    DomainMailRefferred* content_;
};

// Registers one `attach` element that belongs to all answers of a mail user.
class AutoresponderAttachDeployer : public XmlDeployDocAbility {
  public:
    AutoresponderAttachDeployer(MailName user, DomainMailRefferred& content);

    using XmlDeployDocAbility::act;
    void act(XmlNode node) const override;

  private:
    MailName user_;
    DomainMailRefferred* content_;
};

}  // namespace zelvo
