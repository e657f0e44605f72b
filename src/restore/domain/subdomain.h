// Subdomains of a domain with hosting of its own.
#pragma once

#include <string>

#include "content/vhost_refferred.h"
#include "exec/cli_exec.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/domain_info.h"

namespace zelvo {

// Restores one `subdomain` element.
class tSubdomainDeployer : public XmlDeployDocAbility {
  public:
    // domain: with the directory and the system user of its hosting. content: gathers what is to be
    // unpacked; must outlive the deployer.
    tSubdomainDeployer(DomainInfo domain, DomainVHostRefferred& content);

    using XmlDeployDocAbility::act;
    // Restores the subdomain up to its content, which is only gathered. Raises
    // FailedSubdomainDeployment, MigrationTerminatedException and, for a quota that is no number,
    // NumberConversionError; the failures of its parts are told.
    void act(XmlNode node) const override;

  private:
    void deploySubdomain(const XmlNode& node, const std::string& name) const;
    void create(const XmlNode& node, const std::string& name) const;
    void remove(const std::string& name) const;
    CliExec update(const std::string& name) const;
    void gatherContent(const XmlNode& node, const std::string& name) const;
    void deploySiteApps(const XmlNode& node, const std::string& name) const;
    std::string contentUser(const XmlNode& node) const;

    DomainInfo domain_;
    DomainVHostRefferred* content_;
};

}  // namespace zelvo
