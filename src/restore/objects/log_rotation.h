// How the log files of a site are rotated.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Appends to cmd the options that a `logrotation` element asks for.
void appendLogrotationOptions(const XmlNode& logrotation, CmdLine& cmd);

// Sets the rotation of one domain from its `logrotation` element.
class tLogrotationDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8.
    explicit tLogrotationDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Raises ExecCmd::Failed, UnsafeName, and MigrationTerminatedException when the run is to stop.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

}  // namespace zelvo
