// The restore of the templates of accounts.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `client-template` element.
class ClientTemplateDeployer : public XmlDeployDocAbility {
  public:
    // owner: login of the reseller, or "admin".
    explicit ClientTemplateDeployer(std::string owner);

    using XmlDeployDocAbility::act;
    // Makes the template unless its owner has one of that name. Raises UnsafeName,
    // ExecCmd::Failed, and AssertionFailed for an expiration that is no number.
    void act(XmlNode node) const override;

  protected:
    // Appends the limits and permissions of the accounts that are made from the template. Raises
    // NumberConversionError.
    static void fillCmd(CmdLine& cmd, const XmlNode& node);

  private:
    std::string owner_;
};

// Restores one `reseller-template` element: what a client's has, and more. All belong to the
// administrator.
class ResellerTemplateDeployer : public ClientTemplateDeployer {
  public:
    ResellerTemplateDeployer();

    using ClientTemplateDeployer::act;
    // As that of clients.
    void act(XmlNode node) const override;

  protected:
    static void fillCmd(CmdLine& cmd, const XmlNode& node);
};

}  // namespace zelvo
