#include "restore/toolbox/traffic.h"

#include "restore/toolbox/panel_command.h"

namespace zelvo {

void loadTraffic(const std::string& word, const std::string& name, const XmlNode& traffic) {
    CliExec cmd = commandOn("traffic", word, name);
    cmd.stdin += traffic.str(".");
    cmd.exec();
}

}  // namespace zelvo
