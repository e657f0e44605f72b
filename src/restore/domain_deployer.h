// Restores one domain of the panel with everything that it holds.
#pragma once

#include <string>

#include "restore/deploy_action.h"
#include "restore/deploy_doc_ability.h"
#include "restore/option_table.h"

namespace zelvo {

// Deploys one `domain` element. An object serves for one call.
class tDomainDeployer : public virtual tDeployDocAbility, public tDeployAction {
  public:
    // domainName: the domain, in UTF-8. ownerName: login of the owning account, or "admin".
    tDomainDeployer(const tDeployAction& action, std::string domainName, std::string ownerName);

    // Restores the domain. Raises FailedDomainDeployment around what cost the whole domain and
    // SkipDomainDueToTemplateHosting for a domain that the template in force does not fit; the
    // failures of its parts are logged and do not leave.
    void operator()(XmlNode node);

  private:
    // True for the words under which the domain's settings are written; a converted account's
    // domains count too.
    bool DeployActionSummaryUpdate() const;
    bool templateInForce() const { return !domainTemplate.empty(); }

    void applyTemplateRules(const XmlNode& node);
    bool getDomainTemplateHasHosting() const;
    bool getDomainTemplateWebmailStatus() const;

    // What hangs on the domain as a whole. Each raises what costs the domain.
    void deployDomain(const XmlNode& node) const;
    void createDomain(const XmlNode& node) const;
    void updateDomain(const XmlNode& node) const;
    void removeDomain() const;

    // What stands inside the domain, in the order of the restore.
    void deployContents(const XmlNode& node) const;
    void deployLimits(const XmlNode& node) const;
    void deployDatabases(const XmlNode& node) const;
    void deployServices(const XmlNode& node) const;
    void deployMailLists(const XmlNode& maillists) const;
    std::string deployHostingOnAddress(const XmlNode& node) const;
    void deployExtras(const XmlNode& node, const std::string& address) const;

    void setLimit(CmdLine& cmd, const XmlNode& limit) const;
    void deployLimit(const XmlNode& limit) const;
    void deployExpirationLimit(const XmlNode& node) const;
    void setStatus(const XmlNode& node) const;
    void setGuid(const XmlNode& node) const;
    void deployTraffic(const XmlNode& traffic) const;

    // What a domain that fails still gets: its status and its expiration.
    void salvage(const XmlNode& node) const;
    void countDomain() const;
    void showProgress() const;

    // The domain administrator: all options in one call, and part by part if that call fails.
    void setDomainUser(const XmlNode& user) const;
    // One pass. Returns 0 when done and 1 if the one call for all failed.
    int _setDomainUser(const XmlNode& user, int byParts) const;
    // Runs one optional group of options as a command of its own; its failure is logged.
    void tryUpdateDomadminStuff(const OptionGroup& options) const;

    // These stand for deployers that are not there yet, and report the element.
    void deployMailSystem(const XmlNode& mailsystem) const;
    void deployHosting(const XmlNode& hosting, const std::string& address, bool exclusive) const;
    void deployDnsZone(const XmlNode& zone, bool templateWebmail) const;

    // Hosting parameters of the dump are to be applied, and not those of the template.
    bool useDumpParameters_ = true;
    // The template in force has physical hosting; false without a template.
    bool templateHasHosting_ = false;
    std::string domainName_;
    std::string ownerName_;
};

}  // namespace zelvo
