// What the server has of site applications, as far as a run knows it.
#pragma once

#include <list>
#include <map>
#include <string>

#include "lib/version.h"
#include "restore/objects/site_app_item.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Base of the deployers of the vault and of pools. The panel is asked for its packages and for the
// items of its pool until it has told them; from then on the deployers keep the lists up to date.
class SiteAppsDeployer : public XmlDeployDocAbility {
  public:
    // These ask the panel where it has not told yet, and raise what getPackages and getAppItems
    // raise.

    // The server has a package of this name whose version compares equal. Packages of one name
    // stand side by side.
    static bool findAppropriatePackage(const std::string& name, const Version& version);
    // The server's pool has this very item.
    static bool findAppropriateAppItem(const AppItems& item);

    // These read the panel's lists anew. They raise ExecCmd::Failed for a utility that fails
    // without an answer, and what AnswerDocument raises; the list is then as it was.
    static void getPackages();
    static void getAppItems();

  protected:
    // These read one element of an answer.
    static void addPackage(const XmlNode& package);
    static void addAppItem(const XmlNode& item);

    static std::multimap<std::string, Version> packages;
    static bool packages_read;
    static std::list<AppItems> appitems;
    static bool appitems_read;
};

// The version that a text tells; none for an empty text.
Version versionOf(const std::string& text);

}  // namespace zelvo
