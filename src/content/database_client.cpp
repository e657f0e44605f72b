#include "content/database_client.h"

#include "commons/errors.h"
#include "commons/files.h"
#include "content/handed_dump.h"
#include "exec/fenced.h"
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

// How a failed statement is told.
constexpr const char* kError = "ERROR ";

// A dump is its author's program in the client, which has commands that read and write files and
// start a shell. So the client has nothing that the author could want; and as a small dump can make
// it print more than this process could hold, not all of that is kept.
void execAsReader(tLogExecCmd& client, const HandedDump& dump) {
    client.confinement.outsider = &dump.reader();
    client.confinement.excerptMark = kError;
    execFenced(client, dump.directory());
}

tLogExecCmd mysqlClient(const DbServerAccess& server, const std::string& database,
                        const HandedDump& dump, NoDefaults place) {
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
    mysql.stdin = "source " + dump.path() + ";\nexit\n";
    return mysql;
}

// A client that refuses the option says so first and has not connected yet: nothing is loaded
// twice. What stands around these words differs from client to client.
bool refusedOption(const tLogExecCmd& mysql) {
    const std::string firstLine = mysql.stderr.substr(0, mysql.stderr.find('\n'));
    return !firstLine.starts_with("ERROR ") &&
           firstLine.find("unknown option '--no-defaults'") != std::string::npos;
}

// The client goes on behind a statement that failed and ends with 0 all the same; what it says of
// one is all that tells of rows that are not there.
void load(tLogExecCmd& mysql, const HandedDump& dump) {
    execAsReader(mysql, dump);
    if (("\n" + mysql.stderr).find(std::string("\n") + kError) != std::string::npos) {
        mysql.reportError();
    }
}

void loadMysql(const DbServerAccess& server, const std::string& database, const HandedDump& dump,
               NoDefaults place) {
    tLogExecCmd mysql = mysqlClient(server, database, dump, place);
    try {
        load(mysql, dump);
        return;
    } catch (const ExTraceable&) {
        if (place == NoDefaults::kFirst || !refusedOption(mysql)) {
            throw;
        }
    }
    theDebugLog->log(std::string("The client wants --no-defaults in front."));
    tLogExecCmd again = mysqlClient(server, database, dump, NoDefaults::kFirst);
    load(again, dump);
}

void loadPostgresql(const DbServerAccess& server, const std::string& database,
                    const HandedDump& dump) {
    tLogExecCmd restore(files::getPgsqlBinDir() + "/pg_restore");
    restore.setEnv("PGUSER", server.login);
    restore.setEnv("PGPASSWORD", server.password);
    restore << "-d" << database << "--use-set-session-authorization";
    addUnlessEmpty(restore, "-h", server.host == "localhost" ? "" : server.host);
    addUnlessEmpty(restore, "-p", server.port);
    restore << dump.path();
    execAsReader(restore, dump);
}

}  // namespace

void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& directory, const std::vector<std::string>& names,
                  NoDefaults place) {
    if (names.empty()) {
        throw EXC(UnExpectedResult) % "empty extract file list";
    }
    if (server.type != kMysql && server.type != kPostgresql) {
        return;
    }
    const HandedDump dump(directory, names);
    if (server.type == kMysql) {
        loadMysql(server, database, dump, place);
    } else {
        loadPostgresql(server, database, dump);
    }
    if (!dump.others().empty()) {
        throw EXC(UnExpectedResult) %
            ("the archive holds more than the database dump; not loaded: " + dump.others());
    }
}

}  // namespace zelvo
