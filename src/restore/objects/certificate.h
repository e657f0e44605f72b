// SSL certificates of domains and of the server.
#pragma once

#include <string>

#include "exec/cli_exec.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `certificate` element.
class CertificateDeployer : public XmlDeployDocAbility {
  public:
    // domainName: whose repository it is in; empty for that of the server.
    explicit CertificateDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Creates, renames or removes the certificate, as the element's word says; other words do
    // nothing. A failure is told, and raised as one that has been (wasTold). Raises
    // MigrationTerminatedException.
    void act(XmlNode node) const override;

  private:
    void deploy(const XmlNode& node) const;
    void create(const XmlNode& node) const;
    // Runs the command on the certificate in its repository.
    void execInRepository(CliExec& cmd, const XmlNode& node) const;

    std::string domainName_;
};

}  // namespace zelvo
