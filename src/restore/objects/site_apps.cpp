#include "restore/objects/site_apps.h"

#include <algorithm>

#include "report/error_functions.h"
#include "restore/toolbox/panel_command.h"
#include "xml/answer_document.h"

namespace zelvo {

std::multimap<std::string, Version> SiteAppsDeployer::packages;
bool SiteAppsDeployer::packages_read = false;
std::list<AppItems> SiteAppsDeployer::appitems;
bool SiteAppsDeployer::appitems_read = false;

bool SiteAppsDeployer::findAppropriatePackage(const std::string& name, const Version& version) {
    if (!packages_read) {
        getPackages();
    }
    const auto [first, last] = packages.equal_range(name);
    return std::any_of(first, last,
                       [&version](const auto& package) { return package.second.isEqual(version); });
}

bool SiteAppsDeployer::findAppropriateAppItem(const AppItems& item) {
    if (!appitems_read) {
        getAppItems();
    }
    return std::find(appitems.begin(), appitems.end(), item) != appitems.end();
}

void SiteAppsDeployer::getPackages() {
    const AnswerDocument answer(askPanel("siteapp", {"--info-packages-xml"}), "packages");
    packages.clear();
    answer.rootNode().foreach ("package", addPackage, deploy_error_func);
    packages_read = true;
}

void SiteAppsDeployer::getAppItems() {
    const AnswerDocument answer(askPanel("siteapp-item", {"--list"}), "sapp-items");
    appitems.clear();
    answer.rootNode().foreach ("sapp-item", addAppItem, deploy_error_func);
    appitems_read = true;
}

void SiteAppsDeployer::addPackage(const XmlNode& package) {
    packages.emplace(package.str("name"), versionOf(package.str("version")));
}

void SiteAppsDeployer::addAppItem(const XmlNode& item) {
    appitems.push_back({item.str("sapp-name"), item.str("sapp-version")});
}

Version versionOf(const std::string& text) {
    Version version;
    version.setVersionData(text.c_str());
    return version;
}

}  // namespace zelvo
