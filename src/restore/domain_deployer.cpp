#include "restore/domain_deployer.h"

#include <utility>

#include "report/debug_log.h"
#include "report/object_logger.h"
#include "restore/domain_suspender.h"
#include "restore/domain_template.h"
#include "restore/guard.h"
#include "restore/limit_number.h"
#include "restore/option_table.h"
#include "restore/passwd.h"
#include "restore/restore_errors.h"
#include "restore/run_settings.h"
#include "restore/walk.h"

namespace zelvo {

namespace {

enum class LimitForm { kMegabytes, kKilobytes, kText };

// The blank in "disk_space_soft " keeps the soft disk limit a plain text, whatever it holds.
LimitForm limitForm(const std::string& name) {
    for (const char* size : {"disk_space", "disk_space_soft ", "max_traffic", "max_traffic_soft"}) {
        if (name == size) {
            return LimitForm::kMegabytes;
        }
    }
    return name == "mbox_quota" ? LimitForm::kKilobytes : LimitForm::kText;
}

}  // namespace

tDomainDeployer::tDomainDeployer(const tDeployAction& action, std::string domainName,
                                 std::string ownerName)
    : tDeployAction(action), domainName_(std::move(domainName)), ownerName_(std::move(ownerName)) {}

void tDomainDeployer::operator()(XmlNode node) {
    ObjectLogger logger(domainName_, "domain");
    useDumpParameters_ = true;
    if (templateInForce()) {
        applyTemplateRules(node);
    }
    showProgress();
    DomainSuspender suspender(domainName_);
    if (suspend && !DeployActionCreate()) {
        suspender.suspendDomain();
    }
    try {
        deployDomain(node);
    } catch (const ExTraceable& failure) {
        guarded([this] { countDomain(); });
        throw EXC_INNER(FailedDomainDeployment, failure) % domainName_;
    }
    if (DeployActionDelete()) {
        return;
    }
    try {
        deployContents(node);
    } catch (const ExTraceable& failure) {
        salvage(node);
        guarded([this] { countDomain(); });
        throw EXC_INNER(FailedDomainDeployment, failure) % domainName_;
    }
    if (node.test("properties/status")) {
        try {
            setStatus(node);
        } catch (...) {
            // A domain whose status cannot be set stays as its utilities left it.
        }
    }
    setGuid(node);
    countDomain();
    theDebugLog->log("Deployment of domain '" + domainName_ + "' is complete");
    suspender.doUnsuspendDomain();
}

bool tDomainDeployer::DeployActionSummaryUpdate() const {
    return tDeployAction::DeployActionSummaryUpdate(action()) || DeployActionConvertToClient() ||
           DeployActionConvertToReseller();
}

void tDomainDeployer::applyTemplateRules(const XmlNode& node) {
    templateHasHosting_ = getDomainTemplateHasHosting();
    const bool domainHasHosting = node.test("phosting");
    if (templateHasHosting_ && !domainHasHosting) {
        throw EXC(SkipDomainDueToTemplateHosting) % domainName_;
    }
    if (templateHasHosting_) {
        theDebugLog->log("Deploying domain using parameters from domain template");
        useDumpParameters_ = false;
    } else if (domainHasHosting) {
        theDebugLog->log("Domain template has no hosting configured, but " + domainName_ +
                         " has hosting. Continuing hosting deployment using domain parameters");
    }
}

bool tDomainDeployer::getDomainTemplateHasHosting() const {
    return domainTemplateHasHosting(domainTemplate);
}

bool tDomainDeployer::getDomainTemplateWebmailStatus() const {
    return domainTemplateWebmailStatus(domainTemplate);
}

void tDomainDeployer::deployDomain(const XmlNode& node) const {
    if (DeployActionChangeOwner()) {
        CliExec cmd = panelCommand("domain");
        cmd << "--change-owner" << domainName_ << "-owner" << ownerName_;
        cmd.exec();
    }
    if (DeployActionCreate()) {
        createDomain(node);
    } else if (DeployActionSummaryUpdate()) {
        updateDomain(node);
    } else if (DeployActionDelete()) {
        removeDomain();
    }
}

void tDomainDeployer::createDomain(const XmlNode& node) const {
    CliExec cmd = panelCommand("domain");
    cmd << "--create" << domainName_ << "-owner" << ownerName_;
    for (const std::string& argument : notify_arg) {
        cmd << argument;
    }
    appendOptions(node, cmd, {{"-guid", "@guid"}, {"-creation-date", "@cr-date"}});
    if (templateInForce()) {
        cmd << "-template" << domainTemplate << "-force";
        const std::string sysuser = "phosting/preferences/sysuser";
        if (templateHasHosting_) {
            getSysUserOpts(node.getNode(sysuser), cmd, false, false);
        }
        const std::string fpuser = "phosting/preferences/fpuser";
        const XmlNode frontpage = node.getNode(node.test(fpuser) ? fpuser : sysuser);
        cmd << "-fplogin" << frontpage.str("@name") << "-fppasswd" << passwd(frontpage).value;
    }
    cmd.exec();
}

void tDomainDeployer::updateDomain(const XmlNode& node) const {
    CliExec cmd = panelCommand("domain");
    cmd << "--update" << domainName_;
    appendOptions(node, cmd, {{"-guid", "@guid"}, {"-creation-date", "@cr-date"}});
    cmd.exec();
}

void tDomainDeployer::removeDomain() const {
    CliExec cmd = panelCommand("domain");
    cmd << "--remove" << domainName_;
    cmd.exec();
}

void tDomainDeployer::deployContents(const XmlNode& node) const {
    if (DeployActionSummaryUpdate()) {
        if (!templateInForce()) {
            deployLimits(node);
        }
        node.foreach (
            "domainuser", [this](const XmlNode& user) { setDomainUser(user); }, deploy_error_func);
    }
    if (node.test("mailsystem")) {
        deployMailSystem(node.getNode("mailsystem"));
    }
    deployDatabases(node);
    if (DeployActionSummaryUpdate()) {
        deployServices(node);
    }
    const std::string address = deployHostingOnAddress(node);
    if (DeployActionSummaryUpdate()) {
        deployExtras(node, address);
    }
}

void tDomainDeployer::deployLimits(const XmlNode& node) const {
    const std::string limits = "limits-and-permissions/limit";
    try {
        CliExec cmd = updateCommand("domain_pref", domainName_);
        forEachNode(node, limits, [&](const XmlNode& limit) { setLimit(cmd, limit); });
        cmd.exec();
    } catch (const ExTraceable& failure) {
        deploy_error_func(failure);
        forEachNode(node, limits, [this](const XmlNode& limit) {
            try {
                deployLimit(limit);
            } catch (...) {
                // The failure of all limits together has been told; the good ones get through.
            }
        });
    }
}

void tDomainDeployer::deployDatabases(const XmlNode& node) const {
    node.foreach (
        "databases/database", [](const XmlNode&) { throw EXC(NotSupportedOperation) % "database"; },
        deploy_error_func);
}

void tDomainDeployer::deployServices(const XmlNode& node) const {
    CliExec cmd = panelCommand("domain_pref");
    cmd << "--update" << domainName_ << "-www" << (node.test("@www= 'false'") ? "false" : "true");
    cmd.exec();
    node.foreach (
        "preferences/domain-alias",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "domain-alias"; },
        deploy_error_func);
    if (node.test("maillists")) {
        guarded([&] { deployMailLists(node.getNode("maillists")); });
    }
    node.foreach (
        "tomcat", [](const XmlNode&) { throw EXC(NotSupportedOperation) % "tomcat"; },
        deploy_error_func);
}

void tDomainDeployer::deployMailLists(const XmlNode& maillists) const {
    CliExec cmd = panelCommand("maillist");
    cmd << "--update-service" << domainName_;
    addStatus(cmd, maillists.getNode("status"));
    cmd.exec();
    maillists.foreach (
        "maillist", [](const XmlNode&) { throw EXC(NotSupportedOperation) % "maillist"; },
        deploy_error_func);
    if (hasCid(maillists, "domainmaillist")) {
        throw EXC(NotSupportedOperation) % "content of maillists";
    }
}

std::string tDomainDeployer::deployHostingOnAddress(const XmlNode& node) const {
    std::string address;
    const std::string hosting = "shosting|fhosting|phosting";
    if (!node.test(hosting)) {
        return address;
    }
    guarded([&] {
        bool exclusive = false;
        if (node.test("properties/ip")) {
            address = node.str("properties/ip/ip-address");
            exclusive = node.test("properties/ip/ip-type = 'exclusive'");
        }
        deployHosting(node.getNode(hosting), address, exclusive);
    });
    return address;
}

void tDomainDeployer::deployExtras(const XmlNode& node, const std::string& address) const {
    node.foreach (
        "properties/dns-zone",
        [this](const XmlNode& zone) {
            deployDnsZone(zone, templateInForce() && getDomainTemplateWebmailStatus());
        },
        deploy_error_func);
    if (node.test("traffic")) {
        guarded([&] { deployTraffic(node.getNode("traffic")); });
    }
    node.foreach (
        "certificates/certificate",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "certificate"; },
        deploy_error_func);
    node.foreach (
        "preferences/custom-button",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "custom-button"; },
        deploy_error_func);
    if (node.test("preferences/default-domain") && !address.empty()) {
        IPDefaultDomains[address] = domainName_;
    }
    if (!templateInForce()) {
        deployExpirationLimit(node);
    }
}

void tDomainDeployer::setLimit(CmdLine& cmd, const XmlNode& limit) const {
    const std::string name = limit.str("@name");
    const std::string text = limit.str(".");
    const std::string what = "Domain " + domainName_ + " " + name;
    cmd << "-" + name;
    switch (limitForm(name)) {
        case LimitForm::kMegabytes:
            cmd << std::to_string(validateMbLimit(parseLimit(text, what), what));
            break;
        case LimitForm::kKilobytes:
            cmd << std::to_string(validateKbLimit(parseLimit(text, what), what));
            break;
        case LimitForm::kText:
            cmd << text;
            break;
    }
}

void tDomainDeployer::deployLimit(const XmlNode& limit) const {
    CliExec cmd = panelCommand("domain_pref");
    cmd << "--update" << domainName_;
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
    CliExec cmd = panelCommand("domain");
    cmd << "--update" << domainName_;
    addStatus(cmd, node.getNode("properties/status"));
    cmd.exec();
}

void tDomainDeployer::setGuid(const XmlNode& node) const {
    if (!node.test("@guid")) {
        return;
    }
    CliExec cmd = panelCommand("domain");
    cmd << "--update" << domainName_ << "-guid" << node.str("@guid");
    cmd.exec();
}

void tDomainDeployer::deployTraffic(const XmlNode& traffic) const {
    CliExec cmd = panelCommand("traffic");
    cmd << "--add-batch" << domainName_;
    cmd.stdin += traffic.str(".");
    cmd.exec();
}

void tDomainDeployer::salvage(const XmlNode& node) const {
    if (node.test("properties/status")) {
        try {
            setStatus(node);
        } catch (...) {
            // The failure that brought us here is the one to tell.
        }
    }
    if (!templateInForce()) {
        try {
            deployExpirationLimit(node);
        } catch (...) {
            // As above.
        }
    }
}

void tDomainDeployer::countDomain() const {
    ++report_ptr_->completedDomains;
    showProgress();
}

void tDomainDeployer::showProgress() const {
    report_ptr_->updateProgressStats(domainName_, objectType::domain);
}

void tDomainDeployer::deployMailSystem(const XmlNode&) const {
    deploy_error_func(EXC(NotSupportedOperation) % "mailsystem");
}

void tDomainDeployer::deployHosting(const XmlNode& hosting, const std::string&, bool) const {
    throw EXC(NotSupportedOperation) % hosting.str("name()");
}

void tDomainDeployer::deployDnsZone(const XmlNode&, bool) const {
    throw EXC(NotSupportedOperation) % "dns-zone";
}

}  // namespace zelvo
