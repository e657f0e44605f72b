#include "restore/domain/domain_deployer.h"

#include <utility>

#include "commons/errors.h"
#include "content/mail_list_refferred.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "restore/domain/domain_alias.h"
#include "restore/domain/domain_suspender.h"
#include "restore/domain/forwarding.h"
#include "restore/domain/mail_list.h"
#include "restore/domain/physical_hosting.h"
#include "restore/domain/tomcat.h"
#include "restore/objects/certificate.h"
#include "restore/objects/custom_button.h"
#include "restore/objects/database.h"
#include "restore/objects/dns_zone.h"
#include "restore/objects/domain_template.h"
#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/limit_number.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/run_settings.h"
#include "restore/toolbox/traffic.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

constexpr OptionRow kGuid = {"-guid", "@guid"};
constexpr OptionRow kCreationDate = {"-creation-date", "@cr-date"};

// The limits that must be numbers. The blank in "disk_space_soft " leaves the soft disk limit out,
// so that it goes out whatever it holds.
bool isNumber(const std::string& limit) {
    for (const char* size :
         {"disk_space", "disk_space_soft ", "max_traffic", "max_traffic_soft", "mbox_quota"}) {
        if (limit == size) {
            return true;
        }
    }
    return false;
}

}  // namespace

tDomainDeployer::tDomainDeployer(std::string ownerName, std::string domainName,
                                 const tDeployAction& action)
    : tDeployAction(action), domain_{std::move(domainName), std::move(ownerName), "", false} {}

void tDomainDeployer::deploy(const std::string& ownerName, const XmlNode& node) {
    tDomainDeployer(ownerName, node.str("@name"), tDeployAction(node)).act(node);
}

void tDomainDeployer::act(XmlNode node) const {
    const ObjectLogger logger(domain_.name, "domain");
    const TemplateRules rules = templateInForce() ? templateRules(node) : TemplateRules();
    showProgress();
    DomainSuspender suspender(domain_.name);
    if (suspend && !DeployActionCreate()) {
        suspender.suspendDomain();
    }
    wrapped(
        EXC(FailedDomainDeployment) % domain_.name, [&] { deployDomain(node, rules); },
        [&] { guarded([this] { countDomain(); }); });
    if (DeployActionDelete()) {
        return;
    }
    wrapped(
        EXC(FailedDomainDeployment) % domain_.name, [&] { deployContents(node, rules); },
        [&] {
            salvage(node);
            guarded([this] { countDomain(); });
        });
    silenced([&] { setStatus(node); });
    setGuid(node);
    countDomain();
    theDebugLog->log("Deployment of domain '" + domain_.name + "' is complete");
    suspender.doUnsuspendDomain();
}

bool tDomainDeployer::writesSettings() const {
    return DeployActionSummaryUpdate(action()) || DeployActionConvertToClient() ||
           DeployActionConvertToReseller();
}

TemplateRules tDomainDeployer::templateRules(const XmlNode& node) const {
    const bool templateHasHosting = domainTemplateHasHosting(domainTemplate);
    const bool domainHasHosting = node.test("phosting");
    if (templateHasHosting && !domainHasHosting) {
        throw EXC(SkipDomainDueToTemplateHosting) % domain_.name;
    }
    if (templateHasHosting) {
        theDebugLog->log("Deploying domain using parameters from domain template");
    } else if (domainHasHosting) {
        theDebugLog->log("Domain template has no hosting configured, but " + domain_.name +
                         " has hosting. Continuing hosting deployment using domain parameters");
    }
    return {!templateHasHosting, templateHasHosting};
}

std::optional<bool> tDomainDeployer::templateWebmail() {
    return templateInForce() ? std::optional(domainTemplateWebmailStatus(domainTemplate))
                             : std::nullopt;
}

void tDomainDeployer::deployDomain(const XmlNode& node, const TemplateRules& rules) const {
    if (DeployActionChangeOwner()) {
        CliExec cmd = commandOn("domain", "--change-owner", domain_.name);
        cmd << "-owner" << domain_.owner;
        cmd.exec();
    }
    if (DeployActionCreate()) {
        createDomain(node, rules);
    } else if (writesSettings()) {
        CliExec cmd = updateCommand("domain", domain_.name);
        appendOptions(node, cmd, {kGuid, kCreationDate});
        cmd.exec();
    } else if (DeployActionDelete()) {
        commandOn("domain", "--remove", domain_.name).exec();
    }
}

void tDomainDeployer::createDomain(const XmlNode& node, const TemplateRules& rules) const {
    CliExec cmd = createCommand("domain", domain_.name);
    cmd << "-owner" << domain_.owner;
    appendNotifyArguments(cmd);
    appendOptions(node, cmd, {kGuid, kCreationDate});
    if (templateInForce()) {
        cmd << "-template" << domainTemplate << "-force";
        const std::string sysuser = "phosting/preferences/sysuser";
        if (rules.templateHasHosting) {
            getSysUserOpts(node.getNode(sysuser), cmd, false, false);
        }
        const std::string fpuser = "phosting/preferences/fpuser";
        const XmlNode frontpage = node.getNode(node.test(fpuser) ? fpuser : sysuser);
        cmd << "-fplogin" << frontpage.str("@name") << "-fppasswd" << passwd(frontpage).value;
    }
    cmd.exec();
}

void tDomainDeployer::deployContents(const XmlNode& node, const TemplateRules& rules) const {
    if (writesSettings()) {
        if (!templateInForce()) {
            deployLimits(node);
        }
        node.foreach (
            "domainuser", [this](const XmlNode& user) { setDomainUser(user); }, deploy_error_func);
    }
    if (node.test("mailsystem")) {
        deployMailSystem(node.getNode("mailsystem"));
    }
    RestoredDatabases databases;
    deployEach(node, "databases/database", DatabaseDeployer(domain_.name, databases));
    if (writesSettings()) {
        deployServices(node);
    }
    const DomainInfo hosted = deployHostingOnAddress(node, rules);
    if (writesSettings()) {
        deployExtras(node, hosted);
    }
}

void tDomainDeployer::deployLimits(const XmlNode& node) const {
    CommandInParts limits(optionalUpdate("domain_pref", domain_.name));
    forEachNode(node, "limits-and-permissions/limit", [&](const XmlNode& limit) {
        limits.add(PartCost::kNothing, [this, limit](CmdLine& cmd) { setLimit(cmd, limit); });
    });
    limits.exec();
}

void tDomainDeployer::deployServices(const XmlNode& node) const {
    CliExec cmd = updateCommand("domain_pref", domain_.name);
    appendOptions(node, cmd, {{"-www", "@www", falseOrTrue}});
    cmd.exec();
    deployEach(node, "preferences/domain-alias", DomainAliasDeployer(domain_.name));
    if (node.test("maillists")) {
        guarded([&] { deployMailLists(node.getNode("maillists")); });
    }
    deployEach(node, "tomcat", TomcatDeployer(domain_.name));
}

void tDomainDeployer::deployMailLists(const XmlNode& maillists) const {
    CliExec cmd = commandOn("maillist", "--update-service", domain_.name);
    addStatus(cmd, maillists.getNode("status"));
    cmd.exec();
    DomainMailListRefferred content(maillists, domain_.name);
    deployEach(maillists, "maillist", tMaillistDeployer(domain_.name, content));
    content.Extract(*extractor);
}

DomainInfo tDomainDeployer::deployHostingOnAddress(const XmlNode& node,
                                                   const TemplateRules& rules) const {
    DomainInfo hosted = domain_;
    const std::string hosting = "shosting|fhosting|phosting";
    if (node.test(hosting)) {
        guarded([&] {
            if (node.test("properties/ip")) {
                const XmlNode ip = node.getNode("properties/ip");
                hosted.address = ip.str("ip-address");
                hosted.hasExclusiveAddress = ip.test("ip-type = 'exclusive'");
            }
            deployHosting(node.getNode(hosting), hosted, rules);
        });
    }
    return hosted;
}

void tDomainDeployer::deployHosting(const XmlNode& hosting, const DomainInfo& hosted,
                                    const TemplateRules& rules) const {
    const ObjectLogger logger(domain_.name, "hosting");
    const std::string kind = hosting.str("name()");
    if (kind == "phosting") {
        PhysicalHostingDeployer(hosted, rules).act(hosting);
    } else if (writesSettings() && kind == "shosting") {
        deploy_shosting(hosting, hosted);
    } else if (writesSettings()) {
        deploy_fhosting(hosting, hosted);
    }
}

void tDomainDeployer::deployExtras(const XmlNode& node, const DomainInfo& hosted) const {
    node.foreach (
        "properties/dns-zone",
        [this](const XmlNode& zone) { DnsDeployer(domain_.name, templateWebmail()).act(zone); },
        deploy_error_func);
    if (node.test("traffic")) {
        guarded([&] { loadTraffic("--add-batch", domain_.name, node.getNode("traffic")); });
    }
    deployEach(node, "certificates/certificate", CertificateDeployer(domain_.name));
    deployEach(node, "preferences/custom-button", CustomButtonDeployer(domain_.name));
    if (node.test("preferences/default-domain") && !hosted.address.empty()) {
        IPDefaultDomains[hosted.address] = domain_.name;
    }
    if (!templateInForce()) {
        deployExpirationLimit(node);
    }
}

void tDomainDeployer::setLimit(CmdLine& cmd, const XmlNode& limit) const {
    const std::string name = limit.str("@name");
    const std::string text = limit.str(".");
    cmd << "-" + name
        << (isNumber(name) ? limitNumber(text, "Domain " + domain_.name + " " + name) : text);
}

void tDomainDeployer::deployLimit(const XmlNode& limit) const {
    CliExec cmd = updateCommand("domain_pref", domain_.name);
    setLimit(cmd, limit);
    cmd.exec();
}

void tDomainDeployer::deployExpirationLimit(const XmlNode& node) const {
    const std::string expiration = "limits-and-permissions/limit[@name='expiration']";
    if (node.test(expiration)) {
        deployLimit(node.getNode(expiration));
    }
}

void tDomainDeployer::setStatus(const XmlNode& node) const {
    if (node.test("properties/status")) {
        CliExec cmd = updateCommand("domain", domain_.name);
        addStatus(cmd, node.getNode("properties/status"));
        cmd.exec();
    }
}

void tDomainDeployer::setGuid(const XmlNode& node) const {
    if (node.test("@guid")) {
        CliExec cmd = updateCommand("domain", domain_.name);
        appendOptions(node, cmd, {{"-guid", "@guid"}});
        cmd.exec();
    }
}

void tDomainDeployer::salvage(const XmlNode& node) const {
    // The failure that brought us here is the one to tell.
    silenced([&] { setStatus(node); });
    if (!templateInForce()) {
        silenced([&] { deployExpirationLimit(node); });
    }
}

void tDomainDeployer::countDomain() const {
    ++report_ptr_->completedDomains;
    showProgress();
}

void tDomainDeployer::showProgress() const {
    report_ptr_->updateProgressStats(domain_.name, objectType::domain);
}

}  // namespace zelvo
