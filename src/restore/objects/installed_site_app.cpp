#include "restore/objects/installed_site_app.h"

#include <algorithm>
#include <utility>

#include "content/content_failure.h"
#include "report/error_functions.h"
#include "report/termination_lines.h"
#include "restore/objects/custom_button.h"
#include "restore/objects/database.h"
#include "restore/objects/site_app_item.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/panel_file.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/walk.h"
#include "xml/answer_document.h"
#include "xml/subtree.h"

namespace zelvo {

namespace {

// The package's name as the panel's tools write it.
std::string fullName(const XmlNode& node) {
    const AppItems package = specOf(node);
    return package.name + "-" + package.version + "-" + node.str("sapp-spec/sapp-release");
}

// Below the document root, whether the dump has it begin with "/" or not.
std::string subPath(const XmlNode& node) {
    const std::string prefix = node.str("sapp-installdir/sapp-prefix");
    return prefix.substr(std::min(prefix.find_first_not_of('/'), prefix.size()));
}

// A database that was there already has no number here, so its users cannot be named.
LinkedResources linkedTo(const RestoredDatabases& restored) {
    LinkedResources linked;
    for (const RestoredDatabases::Database& database : restored.databases) {
        linked.databases.push_back(database.id);
    }
    for (const RestoredDatabases::User& user : restored.users) {
        if (!user.databaseId.empty()) {
            linked.databaseUsers.push_back(user.databaseId + ":" + user.id);
        }
    }
    return linked;
}

}  // namespace

InstalledSiteAppDeployer::InstalledSiteAppDeployer(DomainInfo domain, DomainVHostRefferred& content,
                                                   std::optional<std::string> subdomain)
    : domain_(std::move(domain)), content_(&content), subdomain_(std::move(subdomain)) {}

void InstalledSiteAppDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    auto failed = EXC(FailedSiteAppDeployment) % fullName(node) % domain_.name;
    contentGuarded(failed, [&] { deploy(node); });
}

void InstalledSiteAppDeployer::deploy(const XmlNode& node) const {
    SiteApplication application;
    application.fullName = fullName(node);
    application.subPath = subPath(node);
    application.isSecure = node.test("sapp-installdir/sapp-ssl");
    // Before anything is made for an application whose content has no place.
    safeSubPath(application);
    application.id = registerApplication(node);
    content_->addSiteApp(node, application, subdomain_, domain_.systemUser);
}

std::string InstalledSiteAppDeployer::registerApplication(const XmlNode& node) const {
    // It holds the passwords of the databases' users.
    PanelFile document("rmk-xml");
    document.handOver();
    document.write(subtreeText(node));
    CliExec cmd = registrar(document.path());
    appendLinkedResources(deployLinked(node), cmd);
    cmd << "-print-id";
    addToPoolCommand(domain_.owner, specOf(node)).exec();
    cmd.exec();
    return AnswerDocument(cmd.stdout, "site-app-id").str(".");
}

CliExec InstalledSiteAppDeployer::registrar(const std::string& file) const {
    CliExec cmd = panelCommand("siteapp-registrar", {"--register", file});
    if (subdomain_) {
        cmd << "-subdomain" << *subdomain_ + "." + domain_.name;
    } else {
        cmd << "-domain" << domain_.name;
    }
    return cmd;
}

LinkedResources InstalledSiteAppDeployer::deployLinked(const XmlNode& node) const {
    std::vector<std::string> buttons;
    deployEach(node, "custom-button", CustomButtonDeployer(domain_.name, &buttons));
    RestoredDatabases restored;
    forEachNode(node, "database",
                [&](const XmlNode& database) { deployDatabase(database, restored); });
    LinkedResources linked = linkedTo(restored);
    linked.buttons = std::move(buttons);
    return linked;
}

void InstalledSiteAppDeployer::deployDatabase(const XmlNode& database,
                                              RestoredDatabases& restored) const {
    auto failed = EXC(FailedDatabaseDeployment) % database.str("@name") % domain_.name;
    try {
        DatabaseDeployer(domain_.name, restored).act(database);
    } catch (const Exc<&FailedDatabaseDeployment>&) {
        // It is told as that of the application, not of the database.
        forgetFailure();
        throw;
    } catch (const ExTraceable& failure) {
        forgetFailure();
        failed.causedBy(failure);
        throw failed;
    }
    if (restored.userFailed) {
        throw failed;
    }
}

}  // namespace zelvo
