#include "restore/objects/cron.h"

#include <ostream>
#include <utility>

#include "commons/files.h"
#include "content/content_owner.h"
#include "exec/log_exec_cmd.h"
#include "exec/tmp_file.h"

namespace zelvo {

CronDeployer::CronDeployer(std::string systemUser) : systemUser_(std::move(systemUser)) {}

void CronDeployer::act(XmlNode node) const {
    const std::string owner = contentOwner(systemUser_);
    RMKTmpFile table(files::getTmpDir(), "rmk-cron-", true);
    table << node.str("text()") << std::flush;
    tLogExecCmd cmd(files::getZelvoUtilityPath("crontabmng"));
    cmd << "set" << table.path() << owner;
    cmd.exec();
}

}  // namespace zelvo
