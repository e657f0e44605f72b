#include "restore/domain/domain_alias.h"

#include <utility>

#include "report/error_functions.h"
#include "restore/objects/dns_zone.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

DomainAliasDeployer::DomainAliasDeployer(std::string domainName)
    : domainName_(std::move(domainName)) {}

void DomainAliasDeployer::act(XmlNode node) const {
    const tDeployAction action(node);
    const std::string name = node.str("@name");
    if (action.DeployActionDelete()) {
        commandOn("domalias", "--delete", name).exec();
    } else if (tDeployAction::DeployActionSummaryUpdate(action.action())) {
        writeAlias(node, name, action.DeployActionCreate() ? "--create" : "--update");
        CliExec status = updateCommand("domalias", name);
        addStatus(status, node.getNode("status"));
        status.exec();
        deployEach(node, "dns-zone", DnsDeployer(name));
    }
}

void DomainAliasDeployer::writeAlias(const XmlNode& node, const std::string& name,
                                     const std::string& verb) const {
    CliExec cmd = commandOn("domalias", verb, name);
    appendOptions(node, cmd,
                  {{"-mail", "@mail"}, {"-web", "@web"}, {"-tomcat", "@tomcat"}, {"-dns", "@dns"}});
    cmd << "-domain" << domainName_;
    cmd.exec();
}

}  // namespace zelvo
