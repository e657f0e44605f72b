#include "restore/server/database_servers.h"

#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

void create(const DbServerConfig& config) {
    CliExec cmd = commandOn("database-server", "--create-server", config.server());
    cmd << "-type" << config.type << "-admin" << config.admin->str("@name");
    tDeployDocAbility::getPasswordOpts(*config.admin, cmd);
    cmd.exec();
}

void deployDatabaseServer(const XmlNode& node) {
    const DbServerConfig config(node);
    if (!config.admin) {
        theDebugLog->log("Database server " + config.server() +
                         " does not contain db admin node. Deployment skipped.");
    } else if (!guarded([&config] { create(config); })) {
        theDebugLog->log("Deployment of database server " + config.server() + " was failed");
    }
}

}  // namespace

DbServerConfig::DbServerConfig(const XmlNode& element) : DbServer(element) {
    if (element.test("db-admin")) {
        admin = element.getNode("db-admin");
    }
}

void deployDatabaseServers(const XmlNode& server) {
    forEachNode(server, "db-servers/db-server", deployDatabaseServer);
}

}  // namespace zelvo
