#include "content/database_client.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "commons/files.h"
#include "content/content_errors.h"
#include "exec/descriptor.h"
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

// A client that refuses the option says so first and has not connected yet: nothing is loaded
// twice.
bool refusedOption(const tLogExecCmd& mysql) {
    const std::string firstLine = mysql.stderr.substr(0, mysql.stderr.find('\n'));
    return firstLine.ends_with(": unknown option '--no-defaults'");
}

// The client goes on behind a statement that failed and ends with 0 all the same; what it says of
// one is all that tells of rows that are not there.
void load(tLogExecCmd& mysql) {
    mysql.exec();
    if (("\n" + mysql.stderr).find("\nERROR ") != std::string::npos) {
        mysql.reportError();
    }
}

void loadMysql(const DbServerAccess& server, const std::string& database, const std::string& dump) {
    tLogExecCmd mysql = mysqlClient(server, database, dump, NoDefaults::kBehindServer);
    try {
        load(mysql);
        return;
    } catch (const ExTraceable&) {
        if (!refusedOption(mysql)) {
            throw;
        }
    }
    theDebugLog->log(std::string("The client wants --no-defaults in front."));
    tLogExecCmd again = mysqlClient(server, database, dump, NoDefaults::kFirst);
    load(again);
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

// Ends the client's commands of its own for the rest of the input, \! and system, which start a
// shell, among them. To other clients it is a comment.
constexpr std::string_view kSandboxLine = "/*M!999999\\- */\n";

// Writes a text and behind it a file into a new file; false with errno set when that fails.
bool copyBehind(std::string_view text, const std::string& source, const std::string& target) {
    const Descriptor from(open(source.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    const Descriptor to(open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!from.isOpen() || !to.isOpen() ||
        write(to.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        return false;
    }
    // A byte order mark is one at the start of a file only.
    char start[3] = {};
    const bool isMarked = pread(from.get(), start, sizeof(start), 0) == sizeof(start) &&
                          std::string_view(start, sizeof(start)) == "\xEF\xBB\xBF";
    off_t place = isMarked ? sizeof(start) : 0;
    ssize_t sent = 0;
    do {
        constexpr std::size_t kBlock = 1 << 30;
        sent = sendfile(to.get(), from.get(), &place, kBlock);
    } while (sent > 0);
    return sent == 0;
}

}  // namespace

bool hasClient(const DbServerAccess& server) {
    return server.type == kMysql || server.type == kPostgresql;
}

void forbidShell(const DbServerAccess& server, const std::string& dump) {
    if (server.type == kMysql) {
        const std::string open = dump + ".open";
        if (rename(dump.c_str(), open.c_str()) != 0 || !copyBehind(kSandboxLine, open, dump)) {
            throw EXC(UnExpectedResult) % (dump + ": " + strerror(errno));
        }
        unlink(open.c_str());
    }
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
