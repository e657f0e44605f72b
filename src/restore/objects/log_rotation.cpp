#include "restore/objects/log_rotation.h"

#include <utility>

#include "report/termination_lines.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

// The size counts only where no period does.
std::optional<std::string> unlessPeriodic(const XmlNode& logrotation, const char* item) {
    return logrotation.test("logrotation-period/@period") ? std::nullopt
                                                          : always(logrotation, item);
}

}  // namespace

void appendLogrotationOptions(const XmlNode& logrotation, CmdLine& cmd) {
    appendOptions(logrotation, cmd,
                  {{"-log_rotate", "@enabled", always},
                   {"-log_compress", "@compress", always},
                   {"-log_email", "@email"},
                   {"-log_max_num", "@max-number-of-logfiles", always},
                   {"-log_bytime", "logrotation-period/@period"},
                   {"-log_bysize", "logrotation-maxsize", unlessPeriodic}});
}

tLogrotationDeployer::tLogrotationDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void tLogrotationDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    CliExec cmd = optionalUpdate("domain", domainName_);
    appendLogrotationOptions(node, cmd);
    cmd.exec();
}

}  // namespace zelvo
