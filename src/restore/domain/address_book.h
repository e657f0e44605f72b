// The address book of a mail user.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `addressbook-contact` element.
class AddressbookContactDeployer : public XmlDeployDocAbility {
  public:
    // owner: full name of the mail user.
    explicit AddressbookContactDeployer(std::string owner);

    using XmlDeployDocAbility::act;
    // Raises UnsafeName for an id that looks like an option, and ExecCmd::Failed. An attribute that
    // can be no option of a contact is left out and told.
    void act(XmlNode node) const override;

  private:
    std::string owner_;
};

// Restores one `addressbook-group` element.
class AddressbookGroupDeployer : public XmlDeployDocAbility {
  public:
    // owner: full name of the mail user.
    explicit AddressbookGroupDeployer(std::string owner);

    using XmlDeployDocAbility::act;
    // Raises as that of a contact.
    void act(XmlNode node) const override;

  private:
    std::string owner_;
};

}  // namespace zelvo
