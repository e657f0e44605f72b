#include "restore/account/client_deployer.h"

#include <utility>

#include "report/debug_log.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "restore/domain/domain_deployer.h"
#include "restore/objects/custom_button.h"
#include "restore/objects/domain_template_deployer.h"
#include "restore/objects/site_app_pool.h"
#include "restore/objects/skeleton.h"
#include "restore/toolbox/limit_number.h"
#include "restore/toolbox/option_name.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/run_settings.h"
#include "restore/toolbox/traffic.h"
#include "restore/toolbox/walk.h"
#include "restore/toolbox/whole_number.h"

namespace zelvo {

namespace {

constexpr OptionRow kEmail = {"-email", "preferences/pinfo[@name='email']", decoded};

// The account's password, read once: an empty one is replaced by a random one, which must be the
// same when the account is created and when it is updated.
passwd accountPassword(const XmlNode& node) {
    return ensureNoEmptyPassword(
        passwd(node.test("properties") ? node.getNode("properties") : node), "sysuser");
}

}  // namespace

ClientDeployer::ClientDeployer(std::string ownerName, std::string name, const tDeployAction& action)
    : tDeployAction(action), ownerName_(std::move(ownerName)), name_(std::move(name)) {}

void ClientDeployer::deploy(const std::string& ownerName, const XmlNode& node) {
    ClientDeployer(ownerName, node.str("@name"), tDeployAction(node)).act(node);
}

void ClientDeployer::act(XmlNode node) const {
    const ObjectLogger logger(name_, "client");
    deployClientData(node);
    theDebugLog->log("Restore of client '" + name_ + "' is complete");
}

void ClientDeployer::deployClientData(const XmlNode& node) const {
    showProgress();
    // Made here, so that its place is this function and not a part of it.
    auto failed = EXC(FailedClientDeployment) % name_;
    guarded([&] { wrapped(failed, [&] { deployClientStuff(node); }); });
    if (!DeployActionSummarySkip(action())) {
        ++report_ptr_->completedAccounts;
    }
    showProgress();
    node.foreach (
        "domains/domain", [this](const XmlNode& domain) { deployDomain(domain); },
        deploy_error_func);
    if (!DeployActionSummarySkip(action()) && !DeployActionDelete()) {
        deployEach(node, "(content/cid[@type='skeleton'])[1]", SkeletonDeployer(name_));
    }
    showProgress();
}

void ClientDeployer::showProgress() const {
    report_ptr_->updateProgressStats(name_, objectType::account);
}

void ClientDeployer::deployDomain(const XmlNode& node) const {
    tDomainDeployer::deploy(name_, node);
}

void ClientDeployer::deployClientStuff(const XmlNode& node) const {
    const std::string contact = node.test("@contact") ? node.str("@contact") : name_;
    convert();
    if (DeployActionChangeOwner()) {
        changeOwner(GetClientCliUtil());
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
        commandOn(GetClientCliUtil(), "--remove", name_).exec();
        return;
    }
    if (!DeployActionSummarySkip(action())) {
        deployProperties(node);
    }
}

void ClientDeployer::convert() const {
    if (DeployActionConvertToClient()) {
        commandOn("reseller", "--convert-to-client", name_).exec();
        changeOwner("client");
    }
    if (DeployActionConvertToReseller()) {
        commandOn("client", "--convert-to-reseller", name_).exec();
    }
}

void ClientDeployer::changeOwner(const std::string& utility) const {
    CliExec cmd = commandOn(utility, "--change-owner", name_);
    cmd << "-owner" << ownerName_;
    cmd.exec();
}

void ClientDeployer::create(const XmlNode& node, const std::string& contact,
                            const passwd& password) const {
    CliExec cmd = createCommand(GetClientCliUtil(), name_);
    cmd << "-name" << contact;
    appendNotifyArguments(cmd);
    addPasswdToCmdLine(password, cmd);
    appendOptions(node, cmd, {kEmail, {"-creation-date", "@cr-date"}, {"-guid", "@guid"}});
    cmd << "-owner" << ownerName_;
    cmd.exec();
}

void ClientDeployer::update(const XmlNode& node, const passwd* password) const {
    CliExec cmd = updateCommand(GetClientCliUtil(), name_);
    cmd << "-login" << name_;
    appendOptions(node, cmd, {{"-name", "@contact"}});
    if (password) {
        addPasswdToCmdLine(*password, cmd);
    }
    appendOptions(node, cmd,
                  {kEmail,
                   {"-creation-date", "@cr-date"},
                   {"-uid", "@uid"},
                   {"-ownership", "@ownership"},
                   {"-guid", "@guid"}});
    cmd.exec();
}

void ClientDeployer::deployProperties(const XmlNode& node) const {
    guarded([&] { deployLimits(node); });
    if (node.test("properties/status")) {
        tryUpdateClientStuff([&](CmdLine& cmd) { setStatus(cmd, node); });
    }
    guarded([&] { deployPersonalData(node); });
    tryUpdateClientPrefStuff([&](CmdLine& cmd) { setLocale(cmd, node); });
    tryInstallSkin(node, GetClientCliPrefUtil(), name_);
    guarded([&] { deployPreferences(node); });
    node.foreach (
        "ip_pool/ip", [this](const XmlNode& address) { deployIpPool(address); }, deploy_error_func);
    deployEach(node, "sapp-pool/sapp-item", SiteAppClientDeployer(name_));
    if (node.test("traffic")) {
        guarded([&] { loadTraffic("--add-batch-user", name_, node.getNode("traffic")); });
    }
    deployEach(node, "preferences/domain-template", DomainTemplateDeployer(name_));
    deployEach(node, "preferences/custom-button", CustomButtonDeployer(name_));
    if (node.test("properties/wz-reseller")) {
        guarded([&] { deploySiteWizard(node.getNode("properties/wz-reseller")); });
    }
}

void ClientDeployer::deployLimits(const XmlNode& node) const {
    CliExec cmd = optionalUpdate(GetClientCliUtil(), name_);
    refuseNonNumbers([&] {
        forEachNode(node, "limits-and-permissions/limit",
                    [&](const XmlNode& limit) { setLimit(cmd, limit); });
    });
    cmd.exec();
}

void ClientDeployer::deployPersonalData(const XmlNode& node) const {
    const char* const items = "preferences/pinfo[(@name!='email') and (@name!='locale')]";
    if (!node.test(items)) {
        return;
    }
    CliExec cmd = optionalUpdate(GetClientCliUtil(), name_);
    guardedEach(node, items, [&](const XmlNode& item) { setSafePinfo(cmd, item); });
    setCountry(cmd, node);
    cmd.exec();
}

void ClientDeployer::deployPreferences(const XmlNode& node) const {
    CliExec cmd = optionalUpdate(GetClientCliPrefUtil(), name_);
    getMaxButtonLength(node, cmd);
    getLockScreen(node, cmd);
    for (const char* permissions :
         {"limits-and-permissions/permission[@name != 'multiple-sessions']",
          "limits-and-permissions/permission[@name='multiple-sessions']"}) {
        guardedEach(node, permissions,
                    [&](const XmlNode& permission) { addPermission(cmd, permission); });
    }
    cmd.exec();
}

void ClientDeployer::deployIpPool(const XmlNode& address) const {
    CliExec cmd = commandOn("ip_pool", "--add", address.str("ip-address"));
    cmd << "-type" << address.str("ip-type") << "-owner" << name_;
    execOrReport(cmd);
}

void ClientDeployer::deploySiteWizard(const XmlNode& wizard) const {
    CliExec cmd = updateCommand(GetClientCliUtil(), name_);
    appendOptions(wizard, cmd,
                  {{"-wz-user", "@enabled", trueOrFalse},
                   {"-wz-client-id", "wz-reseller-id"},
                   {"-wz-client-login", "wz-client-login"}});
    cmd.exec();
}

void ClientDeployer::setLimit(CmdLine& cmd, const XmlNode& limit) const {
    const std::string name = limit.str("@name");
    requireAccountOption(name, "a limit");
    cmd << "-" + name << limitNumber(limit.str("."), "Client " + name_ + " " + name);
}

void ClientDeployer::tryUpdateClientStuff(const OptionGroup& options) const {
    tryOptions(optionalUpdate(GetClientCliUtil(), name_), options);
}

void ClientDeployer::tryUpdateClientPrefStuff(const OptionGroup& options) const {
    tryOptions(optionalUpdate(GetClientCliPrefUtil(), name_), options);
}

void ClientDeployer::setStatus(CmdLine& cmd, const XmlNode& node) {
    addStatus(cmd, node.getNode("properties/status"));
}

}  // namespace zelvo
