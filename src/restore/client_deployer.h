// Restores one client of the panel: the account, its settings and the domains below it.
#pragma once

#include <string>

#include "restore/deploy_action.h"
#include "restore/deploy_doc_ability.h"
#include "restore/option_table.h"
#include "restore/passwd.h"

namespace zelvo {

// Deploys one `client` element. What it does is shared with resellers but for the utilities.
class ClientDeployer : public virtual tDeployDocAbility, public tDeployAction {
  public:
    // ownerName: login of the parent account, or "admin". name: the client's login.
    ClientDeployer(std::string ownerName, std::string name, const tDeployAction& action);

    // The names of the utilities for the account and for its preferences.
    virtual std::string GetClientCliUtil() const { return "client"; }
    virtual std::string GetClientCliPrefUtil() const { return "client_pref"; }

    // Restores the account and the domains below it. A failure of the account itself is logged as
    // FailedClientDeployment, any other with the object that failed; what failed does not leave.
    virtual void operator()(XmlNode node) const;

    // Restores one `domain` element with this account as its owner.
    void deployDomain(const XmlNode& node) const;

    const std::string& name() const { return name_; }

  protected:
    // The account, its domains and its skeleton, with the progress before and after.
    void deployClientData(const XmlNode& node) const;

  private:
    // The account and its settings. A failure of a step that makes or changes the account leaves
    // it; a failure of a setting is logged.
    void deployClientStuff(const XmlNode& node) const;
    void convert() const;
    void create(const XmlNode& node, const std::string& contact, const passwd& password) const;
    // password: null to leave the account's password alone.
    void update(const XmlNode& node, const passwd* password) const;
    void deployProperties(const XmlNode& node) const;

    void deployLimits(const XmlNode& node) const;
    void deployPersonalData(const XmlNode& node) const;
    void deployPreferences(const XmlNode& node) const;
    void deployIpPool(const XmlNode& address) const;
    void deployTraffic(const XmlNode& traffic) const;
    void deploySiteWizard(const XmlNode& node) const;

    void setLimit(CmdLine& cmd, const XmlNode& limit) const;
    bool setStatus(CmdLine& cmd, const XmlNode& node) const;

    // Run one optional group of options as a command of its own; its failure is logged.
    void tryUpdateClientStuff(const OptionGroup& options) const;
    void tryUpdateClientPrefStuff(const OptionGroup& options) const;

    std::string ownerName_;
    std::string name_;
};

}  // namespace zelvo
