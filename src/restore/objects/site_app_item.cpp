#include "restore/objects/site_app_item.h"

#include "restore/toolbox/panel_command.h"

namespace zelvo {

AppItems specOf(const XmlNode& node) {
    return {node.str("sapp-spec/sapp-name"), node.str("sapp-spec/sapp-version")};
}

void appendSpec(const AppItems& item, CmdLine& cmd) {
    cmd << "-sapp-name" << item.name << "-sapp-version" << item.version;
}

CliExec addToPoolCommand(const std::string& login, const AppItems& item) {
    CliExec cmd = commandOn("siteapp-item", "--add-to-pool", login);
    appendSpec(item, cmd);
    return cmd;
}

}  // namespace zelvo
