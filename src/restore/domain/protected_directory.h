// Directories of a site that ask for a password.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `pdir` element.
class tProtDirDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8.
    explicit tProtDirDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Protects the directory and lets its users in. Raises FailedProtDirDeployment; the failure of
    // a user is told.
    void act(XmlNode node) const override;

  private:
    void deployDirectory(const XmlNode& node, const std::string& name) const;

    std::string domainName_;
};

// Restores one `pduser` element.
class tProtDirUserDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8. directory: the name of the protected directory.
    tProtDirUserDeployer(std::string domainName, std::string directory);

    using XmlDeployDocAbility::act;
    // Adds the user to the directory. Raises FailedProtDirUserDeployment.
    void act(XmlNode node) const override;

  private:
    void addUser(const XmlNode& node, const std::string& name) const;

    std::string domainName_;
    std::string directory_;
};

}  // namespace zelvo
