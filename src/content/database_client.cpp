#include "content/database_client.h"

#include "commons/files.h"
#include "exec/log_exec_cmd.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

constexpr const char* kMysql = "mysql";
constexpr const char* kPostgresql = "postgresql";

void addUnlessEmpty(CmdLine& command, const char* option, const std::string& value) {
    if (!value.empty()) {
        command << option << value;
    }
}

// Where --no-defaults stands: some clients know it as their very first argument only.
enum class NoDefaults { kBehindServer, kFirst };

tLogExecCmd mysqlClient(const DbServerAccess& server, const std::string& database,
                        const std::string& dump, NoDefaults place) {
    tLogExecCmd mysql(files::getMysqlBinDir() + "/mysql");
    mysql.setEnv("MYSQL_PWD", server.password);
    if (place == NoDefaults::kFirst) {
        mysql << "--no-defaults";
    }
    mysql << "-u" << server.login;
    addUnlessEmpty(mysql, "-h", server.host);
    addUnlessEmpty(mysql, "-P", server.port);
    if (place == NoDefaults::kBehindServer) {
        mysql << "--no-defaults";
    }
    mysql << database;
    mysql.stdin = "source " + dump + ";\nexit\n";
    return mysql;
}

void loadMysql(const DbServerAccess& server, const std::string& database, const std::string& dump) {
    tLogExecCmd mysql = mysqlClient(server, database, dump, NoDefaults::kBehindServer);
    try {
        mysql.exec();
        return;
    } catch (const ExTraceable&) {
        // A client that refuses the option has not connected yet, so nothing is loaded twice.
        if (mysql.stderr.find(": unknown option '--no-defaults'") == std::string::npos) {
            throw;
        }
    }
    theDebugLog->log(std::string("The client wants --no-defaults in front."));
    mysqlClient(server, database, dump, NoDefaults::kFirst).exec();
}

void loadPostgresql(const DbServerAccess& server, const std::string& database,
                    const std::string& dump) {
    tLogExecCmd restore(files::getPgsqlBinDir() + "/pg_restore");
    restore.setEnv("PGUSER", server.login);
    restore.setEnv("PGPASSWORD", server.password);
    restore << "-d" << database << "--use-set-session-authorization";
    addUnlessEmpty(restore, "-h", server.host == "localhost" ? "" : server.host);
    addUnlessEmpty(restore, "-p", server.port);
    restore << dump;
    restore.exec();
}

}  // namespace

bool hasClient(const DbServerAccess& server) {
    return server.type == kMysql || server.type == kPostgresql;
}

void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& dump) {
    if (server.type == kMysql) {
        loadMysql(server, database, dump);
    } else if (server.type == kPostgresql) {
        loadPostgresql(server, database, dump);
    }
}

}  // namespace zelvo
