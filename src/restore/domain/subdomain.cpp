#include "restore/domain/subdomain.h"

#include <utility>

#include "commons/errors.h"
#include "content/destination.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/domain/performance.h"
#include "restore/domain/start_pages.h"
#include "restore/objects/cron.h"
#include "restore/objects/installed_site_app.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/scripting.h"

namespace zelvo {

tSubdomainDeployer::tSubdomainDeployer(DomainInfo domain, DomainVHostRefferred& content)
    : domain_(std::move(domain)), content_(&content) {}

void tSubdomainDeployer::act(XmlNode node) const {
    const std::string name = node.str("@name");
    const ObjectLogger logger(name + "." + domain_.name, "subdomain");
    checkProgramTerminated();
    wrapped(EXC(FailedSubdomainDeployment) % name % domain_.name,
            [&] { deploySubdomain(node, name); });
}

void tSubdomainDeployer::deploySubdomain(const XmlNode& node, const std::string& name) const {
    const tDeployAction action(node);
    // The other steps run for every word, also behind a removal.
    if (action.DeployActionDelete()) {
        remove(name);
    } else if (action.DeployActionCreate()) {
        create(node, name);
    }
    updatePerformance(update(name), node);
    CliExec scripting = update(name);
    scripting.expectOptions();
    updateScripting(scripting, node.getNode("scripting"));
    gatherContent(node, name);
    if (node.test("sysuser")) {
        deployCronTables(node.getNode("sysuser"));
    }
    deploySiteApps(node, name);
}

void tSubdomainDeployer::create(const XmlNode& node, const std::string& name) const {
    CliExec cmd = createCommand("subdomain", name);
    cmd << "-domain" << domain_.name;
    appendOptions(node, cmd, {{"-ssl", "@https"}, {"-same_ssl", "@shared-content"}});
    const bool hasUser = node.test("sysuser");
    cmd << "-ftp_user" << (hasUser ? "native" : "main");
    if (hasUser) {
        getSysUserOpts(node.getNode("sysuser"), cmd, false, true);
    }
    cmd.exec();
}

void tSubdomainDeployer::remove(const std::string& name) const {
    runPanelCommand("subdomain", {"--remove", "-domain", domain_.name, "-subdomains", name});
}

CliExec tSubdomainDeployer::update(const std::string& name) const {
    CliExec cmd = updateCommand("subdomain", name);
    cmd << "-domain" << domain_.name;
    return cmd;
}

void tSubdomainDeployer::gatherContent(const XmlNode& node, const std::string& name) const {
    const std::string directory = getSubdomainDir(domain_.vhostDir, name);
    const std::string user = contentUser(node);
    if (node.test("content") && tDeployAction(node).DeployActionCreate()) {
        removeStartPages(directory);
    }
    content_->addSubDomain(node, name, user);
}

void tSubdomainDeployer::deploySiteApps(const XmlNode& node, const std::string& name) const {
    DomainInfo site = domain_;
    site.systemUser = contentUser(node);
    deployEach(node, "applications/sapp-installed",
               InstalledSiteAppDeployer(site, *content_, name));
}

std::string tSubdomainDeployer::contentUser(const XmlNode& node) const {
    if (!node.test("sysuser")) {
        return domain_.systemUser;
    }
    std::string user = node.str("sysuser/@name");
    if (user.empty()) {
        throw EXC(AssertionFailed) % "is_xml_attr_set(attr_name)";
    }
    return user;
}

}  // namespace zelvo
