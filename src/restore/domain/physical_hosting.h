// A web site of this server: the settings of its hosting, its content, and what lives in it.
#pragma once

#include <string>

#include "content/vhost_refferred.h"
#include "restore/domain/template_rules.h"
#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/domain_info.h"

namespace zelvo {

// Deploys one `phosting` element.
class PhysicalHostingDeployer : public XmlDeployDocAbility {
  public:
    // domain: without its directory and system user, which stand in the element.
    PhysicalHostingDeployer(DomainInfo domain, const TemplateRules& rules);

    using XmlDeployDocAbility::act;
    // Restores the hosting in its fixed order, content last. Raises what costs the steps behind it:
    // EmptyIp for a new hosting without an address, the failure to turn it on at all or off, that
    // of removing the start pages, AssertionFailed for a password of no known type, and UnsafeName
    // or IDNConversationError for a domain that cannot have a directory. Raises
    // NumberConversionError, which ends the run, for a quota that is no number. The failures of its
    // other parts are told.
    void act(XmlNode node) const override { deploy_phosting(node); }

  private:
    void deploy_phosting(const XmlNode& node) const;

    // The hosting itself.
    void turnOff() const;
    void turnOn(const XmlNode& node, const tDeployAction& action) const;
    void deploySettings(const XmlNode& node) const;
    void appendType(CmdLine& cmd) const;
    void deployScripting(const XmlNode& node) const;
    void deployPreferences(const XmlNode& node) const;
    void deployFrontpage(const XmlNode& node) const;

    // What is in it. site: the domain with its directory and system user.
    DomainInfo withDirectory(const XmlNode& node) const;
    static void unpackWhole(const XmlNode& node, const DomainInfo& site);
    static void deployObjects(const XmlNode& node, const DomainInfo& site,
                              DomainVHostRefferred& content);
    static void deployAnonFtp(const XmlNode& anonftp, const DomainInfo& site,
                              DomainVHostRefferred& content);
    void publishWizardSite(const XmlNode& wzDomain) const;

    CliExec update() const;

    DomainInfo domain_;
    TemplateRules rules_;
};

}  // namespace zelvo
