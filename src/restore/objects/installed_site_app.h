// Site applications that are installed on a domain or subdomain.
#pragma once

#include <optional>
#include <string>

#include "content/vhost_refferred.h"
#include "restore/objects/linked_resources.h"
#include "restore/objects/restored_databases.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/domain_info.h"

namespace zelvo {

// Restores one `applications/sapp-installed` element.
class InstalledSiteAppDeployer : public XmlDeployDocAbility {
  public:
    // domain: with the system user that owns the content. content: learns of the application; must
    // outlive the deployer. subdomain: what stands before the domain, in UTF-8, for an application
    // on a subdomain.
    InstalledSiteAppDeployer(DomainInfo domain, DomainVHostRefferred& content,
                             std::optional<std::string> subdomain = std::nullopt);

    using XmlDeployDocAbility::act;
    // Makes the application's buttons and databases, registers it and has its content unpacked with
    // that of the domain. A failure is told; what was made for the application stays, its
    // customer's data in it. Raises MigrationTerminatedException.
    void act(XmlNode node) const override;

  private:
    void deploy(const XmlNode& node) const;
    // Returns the panel's number for it.
    std::string registerApplication(const XmlNode& node) const;
    // The command that registers it, but for its resources. file: the element, for the registrar.
    CliExec registrar(const std::string& file) const;
    LinkedResources deployLinked(const XmlNode& node) const;
    void deployDatabase(const XmlNode& database, RestoredDatabases& restored) const;

    DomainInfo domain_;
    DomainVHostRefferred* content_;
    std::optional<std::string> subdomain_;
};

}  // namespace zelvo
