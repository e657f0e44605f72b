#include "restore/domain/physical_hosting.h"

#include <utility>

#include "commons/errors.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/content_owner.h"
#include "content/destination.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/domain/anonymous_ftp.h"
#include "restore/domain/performance.h"
#include "restore/domain/protected_directory.h"
#include "restore/domain/start_pages.h"
#include "restore/domain/subdomain.h"
#include "restore/domain/web_user.h"
#include "restore/domain/webalizer.h"
#include "restore/objects/cron.h"
#include "restore/objects/installed_site_app.h"
#include "restore/objects/log_rotation.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/scripting.h"

namespace zelvo {

namespace {

constexpr const char* kSysUser = "preferences/sysuser";

constexpr OptionRow kSettings[] = {{"-webstat", "@webstat", ifSet},
                                   {"-err_docs", "@errdocs", ifSet},
                                   {"-iis_app_pool", "@iis-app-pool"}};

void appendSysUser(const XmlNode& phosting, CmdLine& cmd) {
    if (phosting.test(kSysUser)) {
        tDeployDocAbility::getSysUserOpts(phosting.getNode(kSysUser), cmd, true, true);
    }
}

void appendFrontpageUser(const XmlNode& phosting, CmdLine& cmd) {
    const std::string fpuser = "preferences/fpuser";
    if (phosting.test(fpuser)) {
        const XmlNode user = phosting.getNode(fpuser);
        const std::string name = user.str("@name");
        cmd << "-fplogin" << name << "-fppasswd"
            << ensureNoEncryptedPassword(passwd(user), "Frontpage user " + name).value;
    }
}

// Silence about safe mode means off.
void appendSafeMode(const XmlNode& scripting, CmdLine& cmd) {
    appendOptions(scripting, cmd, {{"-php_safe_mode", "not(@php_safe_mode)", falseIf}});
}

}  // namespace

PhysicalHostingDeployer::PhysicalHostingDeployer(DomainInfo domain, const TemplateRules& rules)
    : domain_(std::move(domain)), rules_(rules) {}

void PhysicalHostingDeployer::deploy_phosting(const XmlNode& node) const {
    const tDeployAction action(node);
    theDebugLog->log("  # Hosting for " + domain_.name);
    if (action.DeployActionDelete()) {
        turnOff();
        return;
    }
    if (tDeployAction::DeployActionSummaryUpdate(action.action())) {
        turnOn(node, action);
    }
    deployScripting(node);
    deployPreferences(node);
    const DomainInfo site = withDirectory(node);
    if (node.test("content") && action.DeployActionCreate()) {
        removeStartPages(site.vhostDir);
    }
    deployFrontpage(node);
    unpackWhole(node, site);
    DomainVHostRefferred content(node, site.name, site.systemUser);
    content.addDomainVhost(node);
    deployObjects(node, site, content);
    content.Extract(*extractor);
    if (node.test("preferences/wz-domain")) {
        debugLogged([&] { publishWizardSite(node.getNode("preferences/wz-domain")); });
    }
    updatePerformance(update(), node);
}

// ---- the hosting itself --------------------------------------------------

CliExec PhysicalHostingDeployer::update() const { return optionalUpdate("domain", domain_.name); }

void PhysicalHostingDeployer::turnOff() const {
    CliExec cmd = update();
    cmd << "-hosting"
        << "false";
    cmd.exec();
}

void PhysicalHostingDeployer::turnOn(const XmlNode& node, const tDeployAction& action) const {
    if (domain_.address.empty() && action.DeployActionCreate()) {
        throw EXC(EmptyIp) % domain_.name;
    }
    if (rules_.useDumpParameters) {
        deploySettings(node);
    }
    tryOptions(update(), [&](CmdLine& cmd) {
        appendOptions(node, cmd, {{"-ssl", "@https", ifSet}});
    });
}

void PhysicalHostingDeployer::deploySettings(const XmlNode& node) const {
    CommandInParts settings(update());
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) {
        appendType(cmd);
        appendSysUser(node, cmd);
    });
    for (const OptionRow& row : kSettings) {
        settings.add(PartCost::kItself, [&](CmdLine& cmd) { appendOptions(node, cmd, {row}); });
    }
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { appendFrontpageUser(node, cmd); });
    settings.exec([&](CmdLine& cmd) {
        appendType(cmd);
        for (const OptionRow& row : kSettings) {
            appendOptions(node, cmd, {row});
        }
        appendSysUser(node, cmd);
        appendFrontpageUser(node, cmd);
    });
}

void PhysicalHostingDeployer::appendType(CmdLine& cmd) const {
    cmd << "-hosting"
        << "true"
        << "-hst_type"
        << "phys";
    if (!domain_.address.empty()) {
        cmd << "-ip" << domain_.address;
    }
}

void PhysicalHostingDeployer::deployScripting(const XmlNode& node) const {
    const std::string expr = "limits-and-permissions/scripting";
    if (rules_.useDumpParameters && node.test(expr)) {
        const XmlNode scripting = node.getNode(expr);
        updateScripting(update(), scripting, [&](CmdLine& cmd) { appendSafeMode(scripting, cmd); });
    }
}

void PhysicalHostingDeployer::deployPreferences(const XmlNode& node) const {
    tryOptions(optionalUpdate("domain_pref", domain_.name), [&](CmdLine& cmd) {
        if (rules_.useDumpParameters) {
            appendOptions(node, cmd, {{"-wuscripts", "@wu_script"}});
        }
        if (node.test("@at-domains")) {
            theDebugLog->log(std::string("At-domains feature is no longer supported"));
        }
        if (rules_.useDumpParameters) {
            appendOptions(node, cmd, {{"-keep_traf_stat", "preferences/web-stat/@stat-ttl"}});
        }
    });
}

void PhysicalHostingDeployer::deployFrontpage(const XmlNode& node) const {
    if (rules_.useDumpParameters) {
        tryOptions(update(), [&](CmdLine& cmd) {
            appendOptions(node, cmd,
                          {{"-fp", "@fp = 'true'", trueIf},
                           {"-fp_ssl", "@fpssl = 'true'", trueIf},
                           {"-fpauth", "@fpauth = 'true'", trueIf}});
        });
    }
}

void PhysicalHostingDeployer::publishWizardSite(const XmlNode& wzDomain) const {
    CliExec cmd = update();
    cmd << "-publish-wz-site" << *falseOrTrue(wzDomain, "@enabled");
    CliExec plain = cmd;
    const bool isWhole = wzDomain.test("wz-site-id and wz-siteowner-id and wz-siteowner-login");
    if (wzDomain.str("@enabled") == "false" || !isWhole) {
        plain.exec();
        return;
    }
    appendOptions(wzDomain, cmd,
                  {{"-wz-site-id", "wz-site-id"},
                   {"-wz-owner-id", "wz-siteowner-id"},
                   {"-wz-owner-login", "wz-siteowner-login"}});
    if (!debugLogged([&cmd] { cmd.exec(); })) {
        plain.exec();
    }
}

// ---- what is in it -------------------------------------------------------

DomainInfo PhysicalHostingDeployer::withDirectory(const XmlNode& node) const {
    DomainInfo site = domain_;
    site.vhostDir = getVhostDir(domain_.name);
    site.systemUser = node.str("preferences/sysuser/@name");
    return site;
}

void PhysicalHostingDeployer::unpackWhole(const XmlNode& node, const DomainInfo& site) {
    if (!hasCid(node, "whole")) {
        return;
    }
    auto failure = EXC(CantUnpackDomainDocroot) % site.name;
    contentGuarded(failure, [&] {
        requireUnpacked(extractor->extractDomainWhole(getCid(node, "whole"), site.vhostDir,
                                                      contentOwner(site.systemUser)));
    });
}

void PhysicalHostingDeployer::deployAnonFtp(const XmlNode& anonftp, const DomainInfo& site,
                                            DomainVHostRefferred& content) {
    if (site.hasExclusiveAddress) {
        deployAnonymousFtp(anonftp, site.name);
    }
    content.addDomainAnonFtp(anonftp, site.systemUser);
}

void PhysicalHostingDeployer::deployObjects(const XmlNode& node, const DomainInfo& site,
                                            DomainVHostRefferred& content) {
    deployEach(node, "applications/sapp-installed", InstalledSiteAppDeployer(site, content));
    if (node.test("preferences/anonftp")) {
        guarded([&] { deployAnonFtp(node.getNode("preferences/anonftp"), site, content); });
    }
    deployEach(node, "preferences/pdir", tProtDirDeployer(site.name));
    deployEach(node, "webusers/webuser", tWebuserDeployer(site, content));
    deployEach(node, "subdomains/subdomain", tSubdomainDeployer(site, content));
    if (domainTemplate.empty()) {
        deployEach(node, "preferences/logrotation", tLogrotationDeployer(site.name));
    }
    deployEach(node, "preferences/webalizer", WebalizerDeployer(site.name));
    deployEach(node, "preferences/sysuser/cron", CronDeployer(site.systemUser));
}

}  // namespace zelvo
