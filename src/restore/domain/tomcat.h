// The Tomcat service of a domain and its applications.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `tomcat` element.
class TomcatDeployer : public XmlDeployDocAbility {
  public:
    explicit TomcatDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Sets the status of the service, asks for the web server to be reconfigured, and restores the
    // applications, whose failures are told. Raises tError_XPath_CantEvaluate for a service without
    // a status, and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

// Restores one `webapp` element.
class TomcatApplicationDeployer : public XmlDeployDocAbility {
  public:
    explicit TomcatApplicationDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Installs the application from its archive and sets its status. Raises
    // tError_XPath_CantEvaluate where the one or the other is missing, what extractTomCatApp
    // raises, UnsafeName and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

}  // namespace zelvo
