#include "content/database_client.h"

#include "commons/files.h"
#include "exec/log_exec_cmd.h"

namespace zelvo {

namespace {

void addUnlessEmpty(CmdLine& command, const char* option, const std::string& value) {
    if (!value.empty()) {
        command << option << value;
    }
}

void loadMysql(const DbServerAccess& server, const std::string& database, const std::string& dump) {
    tLogExecCmd mysql(files::getMysqlBinDir() + "/mysql");
    mysql.setEnv("MYSQL_PWD", server.password);
    mysql << "-u" << server.login;
    addUnlessEmpty(mysql, "-h", server.host);
    addUnlessEmpty(mysql, "-P", server.port);
    mysql << "--no-defaults" << database;
    mysql.stdin = "source " + dump + ";\nexit\n";
    mysql.exec();
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

void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& dump) {
    if (server.type == "mysql") {
        loadMysql(server, database, dump);
    } else if (server.type == "postgresql") {
        loadPostgresql(server, database, dump);
    }
}

}  // namespace zelvo
