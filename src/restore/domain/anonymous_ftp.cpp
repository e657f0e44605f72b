#include "restore/domain/anonymous_ftp.h"

#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

std::optional<std::string> whether(const XmlNode& node, const char* condition) {
    return node.test(condition) ? "true" : "false";
}

}  // namespace

void deployAnonymousFtp(const XmlNode& anonftp, const std::string& domainName) {
    CliExec cmd = optionalUpdate("anonftp", domainName);
    appendOptions(anonftp, cmd,
                  {{"-status", "@pub='true'", whether},
                   {"-incoming", "@incoming='true'", whether},
                   {"-incoming-dirs", "anonftp-permission[@name='incoming-mkdir']", trueIf},
                   {"-incoming-downloads", "anonftp-permission[@name='incoming-download']", trueIf},
                   {"-message", "@display-login='true'", trueIf},
                   {"-message-text", "login-message"},
                   {"-incoming-limit", "anonftp-limit[@name='incoming-disk-quota']"},
                   {"-max-connects", "anonftp-limit[@name='max-connections']"},
                   {"-bandwidth", "anonftp-limit[@name='bandwidth']"}});
    cmd.exec();
}

}  // namespace zelvo
