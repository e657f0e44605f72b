// Restores one client of the panel: the account, its settings and the domains below it.
#pragma once

#include <string>

#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/passwd.h"

namespace zelvo {

// Deploys one `client` element. What it does is shared with resellers but for the utilities.
class ClientDeployer : public XmlDeployDocAbility, public tDeployAction {
  public:
    // ownerName: login of the parent account, or "admin". name: the client's login.
    ClientDeployer(std::string ownerName, std::string name, const tDeployAction& action);

    // Restores one `client` element below this parent; raises what act raises.
    static void deploy(const std::string& ownerName, const XmlNode& node);

    // The names of the utilities for the account and for its preferences.
    virtual std::string GetClientCliUtil() const { return "client"; }
    virtual std::string GetClientCliPrefUtil() const { return "client_pref"; }

    using XmlDeployDocAbility::act;
    // Restores the account and the domains below it. A failure of the account itself is told as
    // FailedClientDeployment and any other with the object that failed. Raises what saving the
    // progress raises, and what ends the run.
    void act(XmlNode node) const override;

    // Restores one `domain` element with this account as its owner.
    void deployDomain(const XmlNode& node) const;

    const std::string& name() const { return name_; }

  protected:
    // The account, its domains and, of an account that is not left alone or removed, its skeleton,
    // with the progress before and after.
    void deployClientData(const XmlNode& node) const;

  private:
    // The account and its settings. A failure of a step that makes or changes the account leaves
    // it; a failure of a setting is told.
    void deployClientStuff(const XmlNode& node) const;
    void convert() const;
    void changeOwner(const std::string& utility) const;
    void create(const XmlNode& node, const std::string& contact, const passwd& password) const;
    // password: null to leave the account's password alone.
    void update(const XmlNode& node, const passwd* password) const;
    void deployProperties(const XmlNode& node) const;

    void deployLimits(const XmlNode& node) const;
    void deployPersonalData(const XmlNode& node) const;
    void deployPreferences(const XmlNode& node) const;
    void deployIpPool(const XmlNode& address) const;
    void deploySiteWizard(const XmlNode& wizard) const;

    void setLimit(CmdLine& cmd, const XmlNode& limit) const;
    static void setStatus(CmdLine& cmd, const XmlNode& node);

    // Run one optional group of options as a command of its own; its failure is told.
    void tryUpdateClientStuff(const OptionGroup& options) const;
    void tryUpdateClientPrefStuff(const OptionGroup& options) const;

    void showProgress() const;

    std::string ownerName_;
    std::string name_;
};

}  // namespace zelvo
