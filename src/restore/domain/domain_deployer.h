// Restores one domain of the panel with everything that it holds.
#pragma once

#include <optional>
#include <string>

#include "restore/domain/template_rules.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/domain_info.h"
#include "restore/toolbox/option_table.h"

namespace zelvo {

// Deploys one `domain` element.
class tDomainDeployer : public XmlDeployDocAbility, public tDeployAction {
  public:
    // ownerName: login of the owning account, or "admin". domainName: the domain, in UTF-8.
    tDomainDeployer(std::string ownerName, std::string domainName, const tDeployAction& action);

    // Restores one `domain` element below this owner; raises what act raises.
    static void deploy(const std::string& ownerName, const XmlNode& node);

    using XmlDeployDocAbility::act;
    // Restores the domain. Raises FailedDomainDeployment around what cost the whole domain,
    // SkipDomainDueToTemplateHosting for a domain that the template in force does not fit, what
    // asking for that template, setting the guid or saving the progress raises, and
    // NumberConversionError, which ends the run; the failures of its parts are told.
    void act(XmlNode node) const override;

  private:
    // True for the words under which the domain's own settings are written: those of a converted
    // account's domains too.
    bool writesSettings() const;
    static bool templateInForce() { return !domainTemplate.empty(); }

    TemplateRules templateRules(const XmlNode& node) const;
    // Whether the template in force gives webmail; nothing without one.
    static std::optional<bool> templateWebmail();

    // What hangs on the domain as a whole. Each raises what costs the domain.
    void deployDomain(const XmlNode& node, const TemplateRules& rules) const;
    void createDomain(const XmlNode& node, const TemplateRules& rules) const;

    // What stands inside the domain, in the order of the restore.
    void deployContents(const XmlNode& node, const TemplateRules& rules) const;
    void deployLimits(const XmlNode& node) const;
    void deployServices(const XmlNode& node) const;
    void deployMailLists(const XmlNode& maillists) const;
    // Returns the domain with the address of its hosting, if it has any.
    DomainInfo deployHostingOnAddress(const XmlNode& node, const TemplateRules& rules) const;
    void deployHosting(const XmlNode& hosting, const DomainInfo& hosted,
                       const TemplateRules& rules) const;
    void deployExtras(const XmlNode& node, const DomainInfo& hosted) const;

    void setLimit(CmdLine& cmd, const XmlNode& limit) const;
    void deployLimit(const XmlNode& limit) const;
    void deployExpirationLimit(const XmlNode& node) const;
    void setStatus(const XmlNode& node) const;
    void setGuid(const XmlNode& node) const;

    // What a domain that fails still gets: its status and its expiration.
    void salvage(const XmlNode& node) const;
    void countDomain() const;
    void showProgress() const;

    // The domain administrator: all options in one call, and part by part if that call fails.
    void setDomainUser(const XmlNode& user) const;

    // The mail users with their content, and then the mail settings of the domain as a whole.
    void deployMailSystem(const XmlNode& mailsystem) const;
    void setMailStatus(const XmlNode& mailsystem) const;
    void setDomainKeys(const XmlNode& keys) const;
    // Sends one option if the element calls for it. A failure is told.
    void setMailOption(const XmlNode& mailsystem, const std::string& utility,
                       const std::string& verb, const OptionRow& row) const;

    DomainInfo domain_;
};

}  // namespace zelvo
