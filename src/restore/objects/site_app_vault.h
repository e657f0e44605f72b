// The server's vault of site applications.
#pragma once

#include "restore/objects/site_apps.h"

namespace zelvo {

// Restores an `application-vault` element.
class SiteAppVaultDeployer : public SiteAppsDeployer {
  public:
    using XmlDeployDocAbility::act;
    // Installs the packages, then makes the items of the server's pool. The failure of one is told,
    // and the next one follows.
    void act(XmlNode node) const override;
    // Does the same. Returns whether all went through.
    static bool deploy(const XmlNode& vault);

    // Installs the package of a `sapp-package`, unless the server has it. Raises
    // NoSiteAppDistribution if the dump has none of it, what findAppropriatePackage,
    // extractSiteAppDistr and findAppropriateAppItem raise, and ExecCmd::Failed.
    static void deployPackage(const XmlNode& node);

    // Makes the item of a `sapp-item`, unless the server's pool has it. Raises NoSiteAppPackage for
    // one without a package, what the find operations raise, and ExecCmd::Failed.
    static void deployAppItem(const XmlNode& node);

  private:
    static void installPackage(const XmlNode& node);
    // Takes the item away that the panel has made of a package that it did not have before.
    static void removeItemOf(const AppItems& package);
};

}  // namespace zelvo
