#include "restore/restorer.h"

#include "commons/files.h"
#include "exec/log_exec_cmd.h"
#include "report/debug_log.h"
#include "restore/admin_deployer.h"
#include "restore/domain_deployer.h"
#include "restore/guard.h"
#include "restore/option_table.h"
#include "restore/parent_lookup.h"
#include "restore/reseller_deployer.h"
#include "restore/restore_errors.h"
#include "restore/run_settings.h"
#include "restore/server_deployer.h"
#include "xml/tool_answers.h"

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
        guarded([this] { repairStatistics(); });
    }
    if (!IPDefaultDomains.empty()) {
        guarded([this] { setDefaultDomains(); });
    }
    theDebugLog->log("Migration finished");
}

void ZelvoDumpRestorer::deployTopLevel() const {
    if (root.test("server")) {
        guarded([this] { deployServer(root.getNode("server")); });
    }
    if (root.test("admin")) {
        guarded([] { AdminDeployer()(root.getNode("admin")); });
    }
    const auto each = [this](const char* element,
                             void (ZelvoDumpRestorer::*deploy)(const XmlNode&) const) {
        root.foreach (
            element, [&](const XmlNode& node) { (this->*deploy)(node); }, deploy_error_func);
    };
    each("reseller", &ZelvoDumpRestorer::deployReseller);
    each("client", &ZelvoDumpRestorer::deployClient);
    each("domain", &ZelvoDumpRestorer::deployDomain);
    each("mailname", &ZelvoDumpRestorer::deployMailname);
    each("database", &ZelvoDumpRestorer::deployDatabase);
}

void ZelvoDumpRestorer::deployServer(const XmlNode& node) const {
    const ServerDeployer deployer;
    deployer(node);
}

void ZelvoDumpRestorer::deployReseller(const XmlNode& node) const {
    const tDeployAction action(node);
    const ResellerDeployer deployer(node.str("@name"), action);
    deployer(node);
}

void ZelvoDumpRestorer::deployClient(const XmlNode& node) const {
    const tDeployAction action(node);
    const std::string parent = getParentByGuidId(node.str("@owner-guid"));
    const ClientDeployer deployer(parent, node.str("@name"), action);
    deployer(node);
}

void ZelvoDumpRestorer::deployDomain(const XmlNode& node) const {
    const tDeployAction action(node);
    const std::string parent = getParentByGuidId(node.str("@owner-guid"));
    tDomainDeployer deployer(action, node.str("@name"), parent);
    deployer(node);
}

void ZelvoDumpRestorer::deployMailname(const XmlNode& node) const {
    getParentByGuidId(node.str("@owner-guid"));
    throw EXC(NotSupportedOperation) % "mailname";
}

void ZelvoDumpRestorer::deployDatabase(const XmlNode& node) const {
    getParentByGuidId(node.str("@owner-guid"));
    throw EXC(NotSupportedOperation) % "database";
}

std::string ZelvoDumpRestorer::getParentByGuidId(const std::string& guid) {
    if (guid.empty()) {
        theDebugLog->log("Empty parent Guid. Map to admin");
        return "admin";
    }
    CliExec cmd = panelCommand("objectInfo");
    cmd << "--getinfo"
        << "-property-names"
        << "name"
        << "-guid" << guid;
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
    CliExec cmd = panelCommand("client");
    cmd << "--info" << name;
    if (cmd.exec(std::nothrow) != 0) {
        throw EXC(ClientDoesNotExist) % name;
    }
}

void ZelvoDumpRestorer::reconfigureWebserverIfAsked() const {
    if (reconfigureWebserver) {
        tLogExecCmd cmd(files::getZelvoUtilityPath("websrvmng"));
        cmd << "--reconfigure-all";
        cmd.exec(std::nothrow);
    }
}

void ZelvoDumpRestorer::repairStatistics() const {
    tLogExecCmd cmd(files::getCorrectAwStatisticsFileName());
    cmd.exec();
}

void ZelvoDumpRestorer::setDefaultDomains() const {
    CliExec ask = panelCommand("ipmanage");
    ask << "-xi";
    ask.exec(std::nothrow);
    const auto addresses = getZelvoIpInfo(ask.stdout);
    for (const auto& [address, domain] : IPDefaultDomains) {
        const auto known = addresses.find(address);
        if (known == addresses.end() || known->second.defaultDomain) {
            continue;
        }
        guarded([&domain = domain] {
            CliExec cmd = panelCommand("domain_pref");
            cmd << "-d" << domain;
            cmd.exec();
        });
    }
}

}  // namespace zelvo
