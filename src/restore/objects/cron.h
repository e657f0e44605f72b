// Cron tables of system users.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `cron` element.
class CronDeployer : public XmlDeployDocAbility {
  public:
    // systemUser: whose table it is, by its name in the dump.
    explicit CronDeployer(std::string systemUser);

    using XmlDeployDocAbility::act;
    // Replaces the user's table by the text of the element. Raises UnsuitableOwner for a user who
    // cannot have one, CantCreateTempFile and CantWriteTempFile when there is no room for the
    // table, which then stays as it was, and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string systemUser_;
};

// Restores the tables below a `sysuser` element for that user; each failure is told.
void deployCronTables(const XmlNode& sysuser);

}  // namespace zelvo
