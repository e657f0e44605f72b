#include "restore/objects/database.h"

#include <memory>
#include <utility>

#include "content/content_errors.h"
#include "content/unsafe_name.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/objects/database_user.h"
#include "restore/objects/database_version.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/restore_errors.h"
#include "xml/answer_document.h"
#include "xml/tool_answers.h"

namespace zelvo {

namespace {

constexpr const char* kPostgresql = "postgresql";
constexpr const char* kDump = "sqldump";

// The name becomes an argument of the server's client, which must not take it for anything else: a
// client of PostgreSQL would go wherever connection parameters lead, the password with it, and
// without a name to a database of its own choice.
void requireDatabaseName(const std::string& name, const std::string& type) {
    requireNoOption(name, "a database");
    if (name.empty()) {
        throw EXC(UnsafeName) % name % "a database" % "it is empty";
    }
    if (type == kPostgresql &&
        (name.find('=') != std::string::npos || name.find("://") != std::string::npos)) {
        throw EXC(UnsafeName) % name % "a database" % "it looks like connection parameters";
    }
}

// Where the database belongs: the dump's server replaces all of the panel's default.
DbServer serverOf(const XmlNode& node, const std::string& type) {
    DbServer server = DatabaseDeployer::getDefaultServer(type);
    if (node.test("db-server")) {
        server = DbServer(node.getNode("db-server"));
        if (server.type.empty()) {
            server.type = type;
        }
    }
    return server;
}

// The answer holds a password, and most failures quote an answer: the debug log may have that, the
// result of the run may not.
std::unique_ptr<DatabaseCredentials> askForCredentials(CliExec& cmd, const DbServer& server) {
    try {
        cmd.exec();
        return getDatabaseCredentials(cmd.stdout);
    } catch (const Exc<&ExecCmd::Failed>& failure) {
        theDebugLog->log(failure);
        cmd.stdout.clear();
        cmd.reportError();
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
        throw EXC(UnExpectedResult) % ("no credentials of " + server.server() + " were told");
    }
}

// An account of the server that may load the dump.
DatabaseDeployer::Credentials loaderOf(const std::string& type, const DbServer& server,
                                       DatabaseUserDeployer& users) {
    if (type == kPostgresql) {
        return DatabaseDeployer::getServerCredentials(server);
    }
    DatabaseDeployer::Credentials loader{"backup_" + randomStrongPassword(7, systemRandom),
                                         randomStrongPassword(16, systemRandom)};
    users.createTempUser(loader.first, loader.second);
    return loader;
}

}  // namespace

std::map<std::string, DbServer> DatabaseDeployer::defaultServers;
std::map<DbServer, DatabaseDeployer::Credentials> DatabaseDeployer::credentials;

DatabaseDeployer::DatabaseDeployer(std::string domainName, RestoredDatabases& restored)
    : domainName_(std::move(domainName)), restored_(&restored) {}

void DatabaseDeployer::act(XmlNode node) const {
    if (!tDeployAction::DeployActionSummaryUpdate(tDeployAction(node).action())) {
        return;
    }
    const std::string name = node.str("@name");
    const ObjectLogger logger(name, "database");
    checkProgramTerminated();
    bool isSkipped = false;
    wrapped(EXC(FailedDatabaseDeployment) % name % domainName_, [&] {
        try {
            deployDatabase(node, name, node.str("@type"));
        } catch (const Exc<&SkippedDatabaseDeployment>&) {
            isSkipped = true;
        }
    });
    if (isSkipped) {
        throw EXC(SkippedDatabaseDeployment) % name % domainName_;
    }
}

void DatabaseDeployer::deployDatabase(const XmlNode& node, const std::string& name,
                                      const std::string& type) const {
    requireDatabaseName(name, type);
    const DbServer server = serverOf(node, type);
    std::string id;
    if (tDeployAction(node).DeployActionCreate()) {
        id = create(node, name, type, server);
        restored_->databases.push_back({id, node.str("@sapp-param")});
    }
    DatabaseUserDeployer users(name, type, id, *restored_);
    deployEach(node, "dbuser", users);
    requireServerForDump(node, domainName_);
    if (hasCid(node, kDump)) {
        const auto [login, password] = loaderOf(type, server, users);
        unzipdb(name, type, getCid(node, kDump), login, password, server.host, server.port);
    }
}

std::string DatabaseDeployer::create(const XmlNode& node, const std::string& name,
                                     const std::string& type, const DbServer& server) const {
    CliExec cmd = createCommand("database", name);
    cmd << "-domain" << domainName_ << "-type" << type << "-print-id";
    appendOptions(node, cmd, {{"-charset", "@charset"}});
    cmd << "-server" << server.server();
    cmd.exec();
    return AnswerDocument(cmd.stdout, "database-id").str(".");
}

DbServer DatabaseDeployer::getDefaultServer(const std::string& type) {
    const auto known = defaultServers.find(type);
    if (known != defaultServers.end()) {
        return known->second;
    }
    CliExec cmd = panelCommand("database-registrar", {"--get-default-server", "-type", type});
    cmd.exec();
    DbServer server(AnswerDocument(cmd.stdout, "db-server").rootNode());
    server.type = type;
    return defaultServers[type] = server;
}

DatabaseDeployer::Credentials DatabaseDeployer::getServerCredentials(const DbServer& server) {
    const auto known = credentials.find(server);
    if (known != credentials.end()) {
        return known->second;
    }
    CliExec cmd = commandOn("database-registrar", "--get-credentials", server.server());
    cmd << "-type" << server.type;
    const auto answer = askForCredentials(cmd, server);
    if (answer->notConfigured()) {
        throw EXC(SkippedDatabaseDeployment) % server.server() % server.type;
    }
    return credentials[server] = {answer->getUsername(), answer->getPassword()};
}

}  // namespace zelvo
