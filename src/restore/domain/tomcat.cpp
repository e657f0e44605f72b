#include "restore/domain/tomcat.h"

#include <utility>

#include "content/unpacked_file.h"
#include "report/error_functions.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/run_settings.h"

namespace zelvo {

TomcatDeployer::TomcatDeployer(std::string domainName) : domainName_(std::move(domainName)) {}

void TomcatDeployer::act(XmlNode node) const {
    CliExec cmd = commandOn("tomcat", "--update-service", domainName_);
    cmd << "-no-restart";
    addStatus(cmd, node.getNode("status"));
    cmd.exec();
    reconfigureWebserver = true;
    deployEach(node, "webapp", TomcatApplicationDeployer(domainName_));
}

TomcatApplicationDeployer::TomcatApplicationDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void TomcatApplicationDeployer::act(XmlNode node) const {
    const UnpackedFile archive = extractor->extractTomCatApp(getCid(node, "web-app"));
    runPanelCommand("tomcat", {"--install", archive.path(), "-domain", domainName_, "-no-restart"});
    CliExec cmd = updateCommand("tomcat", node.str("@name"));
    cmd << "-domain" << domainName_;
    addStatus(cmd, node.getNode("status"));
    cmd.exec();
}

}  // namespace zelvo
