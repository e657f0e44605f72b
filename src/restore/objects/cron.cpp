#include "restore/objects/cron.h"

#include <utility>

#include "commons/files.h"
#include "content/content_owner.h"
#include "exec/log_exec_cmd.h"
#include "report/error_functions.h"
#include "restore/toolbox/panel_file.h"

namespace zelvo {

CronDeployer::CronDeployer(std::string systemUser) : systemUser_(std::move(systemUser)) {}

void CronDeployer::act(XmlNode node) const {
    const std::string owner = contentOwner(systemUser_);
    PanelFile table("rmk-cron-");
    table.write(node.str("."));
    tLogExecCmd cmd(files::getZelvoUtilityPath("crontabmng"));
    cmd << "set" << table.path() << owner;
    cmd.exec();
}

void deployCronTables(const XmlNode& sysuser) {
    deployEach(sysuser, "cron", CronDeployer(sysuser.str("@name")));
}

}  // namespace zelvo
