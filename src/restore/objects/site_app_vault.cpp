#include "restore/objects/site_app_vault.h"

#include "report/debug_log.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

constexpr const char* kDistribution = "sapp-distrib";

}  // namespace

void SiteAppVaultDeployer::act(XmlNode node) const { deploy(node); }

bool SiteAppVaultDeployer::deploy(const XmlNode& vault) {
    const bool hasPackages = guardedEach(vault, "sapp-packages-pool/sapp-package", deployPackage);
    return guardedEach(vault, "sapp-items-pool/sapp-item", deployAppItem) && hasPackages;
}

void SiteAppVaultDeployer::deployPackage(const XmlNode& node) {
    const AppItems package{node.str("sapp-name"), node.str("sapp-version")};
    const Version version = versionOf(package.version);
    if (findAppropriatePackage(package.name, version)) {
        theDebugLog->log("SiteApplicationPackage " + package.name + " exists. Skipping restore");
        return;
    }
    if (!hasCid(node, kDistribution)) {
        throw EXC(NoSiteAppDistribution) % package.name;
    }
    installPackage(node);
    packages.emplace(package.name, version);
    removeItemOf(package);
}

void SiteAppVaultDeployer::installPackage(const XmlNode& node) {
    const UnpackedFile file = extractor->extractSiteAppDistr(getCid(node, kDistribution));
    CliExec cmd = panelCommand("siteapp", {"--install-on-server", "-file", file.path()});
    execOrReport(cmd);
}

void SiteAppVaultDeployer::removeItemOf(const AppItems& package) {
    // What was known of the pool is out of date. The server did not have the package, so an item of
    // it is none that anybody set up; those of the dump decide.
    getAppItems();
    if (findAppropriateAppItem(package)) {
        CliExec cmd = panelCommand("siteapp-item", {"--remove"});
        appendSpec(package, cmd);
        cmd.exec();
        appitems.remove(package);
    }
}

void SiteAppVaultDeployer::deployAppItem(const XmlNode& node) {
    const AppItems item = specOf(node);
    if (findAppropriateAppItem(item)) {
        theDebugLog->log(std::string("Such Application Item found. Skipping restore"));
        return;
    }
    if (!findAppropriatePackage(item.name, versionOf(item.version))) {
        throw EXC(NoSiteAppPackage) % item.name;
    }
    CliExec cmd = panelCommand("siteapp-item", {"--create"});
    appendSpec(item, cmd);
    appendOptions(node, cmd, {{"-shared", "shared"}, {"-enabled", "@enabled"}});
    execOrReport(cmd);
    appitems.push_back(item);
}

}  // namespace zelvo
