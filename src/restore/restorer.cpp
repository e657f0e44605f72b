#include "restore/restorer.h"

#include "commons/errors.h"
#include "commons/files.h"
#include "exec/log_exec_cmd.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/account/admin_deployer.h"
#include "restore/account/client_deployer.h"
#include "restore/domain/domain_deployer.h"
#include "restore/domain/mail_system.h"
#include "restore/key_value_lines.h"
#include "restore/objects/database.h"
#include "restore/server/server_deployer.h"
#include "restore/toolbox/addresses.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/run_settings.h"

namespace zelvo {

void ZelvoDumpRestorer::operator()() {
    if (!notifyUsers) {
        notify_arg.push_back("-notify");
        notify_arg.push_back("false");
    }
    if (!backupUser.empty()) {
        CliExec::defaultCliUser = backupUser;
    }
    deployTopLevel();
    reconfigureWebserverIfAsked();
    if (backupUser.empty()) {
        guarded([] { repairStatistics(); });
    }
    if (!IPDefaultDomains.empty()) {
        guarded([] { setDefaultDomains(); });
    }
    theDebugLog->log("Migration finished");
}

void ZelvoDumpRestorer::deployTopLevel() {
    if (root.test("server")) {
        guarded([] { deployServer(root.getNode("server")); });
    }
    if (root.test("admin")) {
        guarded([] { AdminDeployer().act(root.getNode("admin")); });
    }
    root.foreach ("reseller", deployReseller, deploy_error_func);
    root.foreach ("client", deployClient, deploy_error_func);
    root.foreach ("domain", deployDomain, deploy_error_func);
    root.foreach ("mailname", deployMailname, deploy_error_func);
    root.foreach ("database", deployDatabase, deploy_error_func);
}

void ZelvoDumpRestorer::deployServer(const XmlNode& node) { ServerDeployer().act(node); }

void ZelvoDumpRestorer::deployReseller(const XmlNode& node) { AdminDeployer::deployReseller(node); }

void ZelvoDumpRestorer::deployClient(const XmlNode& node) {
    ClientDeployer::deploy(ownerOf(node), node);
}

void ZelvoDumpRestorer::deployDomain(const XmlNode& node) {
    tDomainDeployer::deploy(ownerOf(node), node);
}

void ZelvoDumpRestorer::deployMailname(const XmlNode& node) { deployMailName(node, ownerOf(node)); }

void ZelvoDumpRestorer::deployDatabase(const XmlNode& node) {
    RestoredDatabases restored;
    DatabaseDeployer(ownerOf(node), restored).act(node);
}

std::string ZelvoDumpRestorer::ownerOf(const XmlNode& node) {
    try {
        return getParentByGuidId(node.str("@owner-guid"));
    } catch (const ExTraceable&) {
        // The failure knows the guid alone.
        theDebugLog->log("The owner of " + node.str("name()") + " '" + node.str("@name") +
                         "' is not found");
        throw;
    }
}

std::string ZelvoDumpRestorer::getParentByGuidId(const std::string& guid) {
    if (guid.empty()) {
        theDebugLog->log("Empty parent Guid. Map to admin");
        return "admin";
    }
    CliExec cmd =
        panelCommand("objectInfo", {"--getinfo", "-property-names", "name", "-guid", guid});
    if (cmd.exec(std::nothrow) != 0) {
        throw EXC(UnknownParentClassObject) % guid % cmd.stderr;
    }
    const auto properties = parseKeyValueLines(cmd.stdout);
    const auto name = properties.find("name");
    if (name == properties.end()) {
        throw EXC(UnknownParentClassObject) % guid % "'name' not found!";
    }
    return name->second;
}

void ZelvoDumpRestorer::checkClientPresence(const std::string& name) {
    if (panelCommand("client", {"--info", name}).exec(std::nothrow) != 0) {
        throw EXC(ClientDoesNotExist) % name;
    }
}

void ZelvoDumpRestorer::reconfigureWebserverIfAsked() {
    if (reconfigureWebserver) {
        tLogExecCmd cmd(files::getZelvoUtilityPath("websrvmng"));
        cmd << "--reconfigure-all";
        cmd.exec(std::nothrow);
    }
}

void ZelvoDumpRestorer::repairStatistics() {
    tLogExecCmd cmd(files::getCorrectAwStatisticsFileName());
    cmd.exec();
}

void ZelvoDumpRestorer::setDefaultDomains() {
    const auto addresses = askAddresses();
    for (const auto& [address, domain] : IPDefaultDomains) {
        const auto known = addresses.find(address);
        if (known == addresses.end() || known->second.defaultDomain) {
            continue;
        }
        guarded([&domain = domain] { runPanelCommand("domain_pref", {"-d", domain}); });
    }
}

}  // namespace zelvo
