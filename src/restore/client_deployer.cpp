#include "restore/client_deployer.h"

#include <utility>

#include "report/debug_log.h"
#include "report/object_logger.h"
#include "restore/domain_deployer.h"
#include "restore/guard.h"
#include "restore/limit_number.h"
#include "restore/option_table.h"
#include "restore/passwd.h"
#include "restore/restore_errors.h"
#include "restore/run_settings.h"
#include "restore/walk.h"

namespace zelvo {

namespace {

// The limits that are sizes in kilobytes.
bool isKilobyteLimit(const std::string& name) {
    for (const char* size :
         {"disk_space", "disk_space_soft", "max_traffic", "max_traffic_soft", "mbox_quota"}) {
        if (name == size) {
            return true;
        }
    }
    return false;
}

// The account's password, read once: an empty one is replaced by a random one, which must be the
// same when the account is created and when it is updated.
passwd accountPassword(const XmlNode& node) {
    return ensureNoEmptyPassword(
        passwd(node.test("properties") ? node.getNode("properties") : node), "sysuser");
}

}  // namespace

ClientDeployer::ClientDeployer(std::string ownerName, std::string name, const tDeployAction& action)
    : tDeployAction(action), ownerName_(std::move(ownerName)), name_(std::move(name)) {}

void ClientDeployer::operator()(XmlNode node) const {
    ObjectLogger logger(name_, "client");
    deployClientData(node);
    theDebugLog->log("Restore of client '" + name_ + "' is complete");
}

void ClientDeployer::deployClientData(const XmlNode& node) const {
    report_ptr_->updateProgressStats(name_, objectType::account);
    try {
        deployClientStuff(node);
    } catch (const ExTraceable& failure) {
        deploy_error_func(EXC_INNER(FailedClientDeployment, failure) % name_);
    }
    if (!DeployActionSummarySkip(action())) {
        ++report_ptr_->completedAccounts;
    }
    report_ptr_->updateProgressStats(name_, objectType::account);
    node.foreach (
        "domains/domain", [this](const XmlNode& domain) { deployDomain(domain); },
        deploy_error_func);
    if (hasCid(node, "skeleton")) {
        deploy_error_func(EXC(NotSupportedOperation) % "skeleton");
    }
    report_ptr_->updateProgressStats(name_, objectType::account);
}

void ClientDeployer::deployDomain(const XmlNode& node) const {
    const tDeployAction action(node);
    tDomainDeployer deployer(action, node.str("@name"), name_);
    deployer(node);
}

void ClientDeployer::deployClientStuff(const XmlNode& node) const {
    const std::string contact = node.test("@contact") ? node.str("@contact") : name_;
    convert();
    if (DeployActionChangeOwner()) {
        CliExec cmd = panelCommand(GetClientCliUtil());
        cmd << "--change-owner" << name_ << "-owner" << ownerName_;
        cmd.exec();
    }
    if (DeployActionSummaryUpdate(action())) {
        const bool hasProperties = node.test("properties");
        const passwd password =
            DeployActionCreate() || hasProperties ? accountPassword(node) : passwd();
        if (DeployActionCreate()) {
            create(node, contact, password);
        }
        update(node, hasProperties ? &password : nullptr);
    } else if (DeployActionDelete()) {
        CliExec cmd = panelCommand(GetClientCliUtil());
        cmd << "--remove" << name_;
        cmd.exec();
        return;
    }
    if (!DeployActionSummarySkip(action())) {
        deployProperties(node);
    }
}

void ClientDeployer::convert() const {
    if (DeployActionConvertToClient()) {
        CliExec convert = panelCommand("reseller");
        convert << "--convert-to-client" << name_;
        convert.exec();
        CliExec changeOwner = panelCommand("client");
        changeOwner << "--change-owner" << name_ << "-owner" << ownerName_;
        changeOwner.exec();
    }
    if (DeployActionConvertToReseller()) {
        CliExec convert = panelCommand("client");
        convert << "--convert-to-reseller" << name_;
        convert.exec();
    }
}

void ClientDeployer::create(const XmlNode& node, const std::string& contact,
                            const passwd& password) const {
    CliExec cmd = panelCommand(GetClientCliUtil());
    cmd << "--create" << name_ << "-name" << contact;
    for (const std::string& argument : notify_arg) {
        cmd << argument;
    }
    addPasswdToCmdLine(password, cmd);
    setEmail(cmd, node, "preferences/");
    appendOptions(node, cmd, {{"-creation-date", "@cr-date"}, {"-guid", "@guid"}});
    cmd << "-owner" << ownerName_;
    cmd.exec();
}

void ClientDeployer::update(const XmlNode& node, const passwd* password) const {
    CliExec cmd = panelCommand(GetClientCliUtil());
    cmd << "--update" << name_ << "-login" << name_;
    appendOptions(node, cmd, {{"-name", "@contact"}});
    if (password) {
        addPasswdToCmdLine(*password, cmd);
    }
    setEmail(cmd, node, "preferences/");
    appendOptions(node, cmd,
                  {{"-creation-date", "@cr-date"},
                   {"-uid", "@uid"},
                   {"-ownership", "@ownership"},
                   {"-guid", "@guid"}});
    cmd.exec();
}

void ClientDeployer::deployProperties(const XmlNode& node) const {
    guarded([&] { deployLimits(node); });
    if (node.test("properties/status")) {
        tryUpdateClientStuff([&](CmdLine& cmd) { return setStatus(cmd, node); });
    }
    guarded([&] { deployPersonalData(node); });
    tryUpdateClientPrefStuff([&](CmdLine& cmd) { return setLocale(cmd, node); });
    tryInstallSkin(node, GetClientCliPrefUtil(), name_);
    guarded([&] { deployPreferences(node); });
    node.foreach (
        "ip_pool/ip", [this](const XmlNode& address) { deployIpPool(address); }, deploy_error_func);
    node.foreach (
        "sapp-pool/sapp-item",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "sapp-item"; }, deploy_error_func);
    if (node.test("traffic")) {
        guarded([&] { deployTraffic(node.getNode("traffic")); });
    }
    node.foreach (
        "preferences/domain-template",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "domain-template"; },
        deploy_error_func);
    node.foreach (
        "preferences/custom-button",
        [](const XmlNode&) { throw EXC(NotSupportedOperation) % "custom-button"; },
        deploy_error_func);
    if (node.test("properties/wz-reseller")) {
        guarded([&] { deploySiteWizard(node); });
    }
}

void ClientDeployer::deployLimits(const XmlNode& node) const {
    CliExec cmd = updateCommand(GetClientCliUtil(), name_);
    try {
        forEachNode(node, "limits-and-permissions/limit",
                    [&](const XmlNode& limit) { setLimit(cmd, limit); });
    } catch (const LimitConversionError& error) {
        // A limit that is no number costs this command and not the run.
        throw EXC(AssertionFailed) % error.what();
    }
    cmd.exec();
}

void ClientDeployer::deployPersonalData(const XmlNode& node) const {
    const char* const items = "preferences/pinfo[(@name!='email') and (@name!='locale')]";
    if (!node.test(items)) {
        return;
    }
    CliExec cmd = updateCommand(GetClientCliUtil(), name_);
    forEachNode(node, items, [&](const XmlNode& item) { setSafePinfo(cmd, item); });
    setCountry(cmd, node);
    cmd.exec();
}

void ClientDeployer::deployPreferences(const XmlNode& node) const {
    CliExec cmd = updateCommand(GetClientCliPrefUtil(), name_);
    getMaxButtonLength(node, cmd);
    getLockScreen(node, cmd);
    for (const char* permissions :
         {"limits-and-permissions/permission[@name != 'multiple-sessions']",
          "limits-and-permissions/permission[@name='multiple-sessions']"}) {
        forEachNode(node, permissions,
                    [&](const XmlNode& permission) { addPermission(cmd, permission); });
    }
    cmd.exec();
}

void ClientDeployer::deployIpPool(const XmlNode& address) const {
    CliExec cmd = panelCommand("ip_pool");
    cmd << "--add" << address.str("ip-address") << "-type" << address.str("ip-type") << "-owner"
        << name_;
    if (cmd.exec(std::nothrow) != 0) {
        cmd.reportError();
    }
}

void ClientDeployer::deployTraffic(const XmlNode& traffic) const {
    CliExec cmd = panelCommand("traffic");
    cmd << "--add-batch-user" << name_;
    cmd.stdin += traffic.str(".");
    cmd.exec();
}

void ClientDeployer::deploySiteWizard(const XmlNode& node) const {
    const XmlNode wizard = node.getNode("properties/wz-reseller");
    CliExec cmd = updateCommand(GetClientCliUtil(), name_);
    cmd << "-wz-user" << (wizard.test("@enabled='true'") ? "true" : "false");
    appendOptions(wizard, cmd,
                  {{"-wz-client-id", "wz-reseller-id"}, {"-wz-client-login", "wz-client-login"}});
    cmd.exec();
}

void ClientDeployer::setLimit(CmdLine& cmd, const XmlNode& limit) const {
    const std::string name = limit.str("@name");
    const std::string what = "Client " + name_ + " " + name;
    const long long value = parseLimit(limit.str("."), what);
    cmd << "-" + name
        << std::to_string(isKilobyteLimit(name) ? validateKbLimit(value, what)
                                                : validateMbLimit(value, what));
}

void ClientDeployer::tryUpdateClientStuff(const OptionGroup& options) const {
    tryUpdateGroup(GetClientCliUtil(), name_, options);
}

void ClientDeployer::tryUpdateClientPrefStuff(const OptionGroup& options) const {
    tryUpdateGroup(GetClientCliPrefUtil(), name_, options);
}

bool ClientDeployer::setStatus(CmdLine& cmd, const XmlNode& node) const {
    if (!node.test("properties/status")) {
        return false;
    }
    addStatus(cmd, node.getNode("properties/status"));
    return true;
}

}  // namespace zelvo
