// Databases through the real program: the calls and how far a failure reaches, with a real server
// behind the panel; the version gates; and dumps that come back on real servers.

#include "example_company.h"
#include "mariadb.h"
#include "outcome.h"
#include "postgresql.h"
#include "scenario.h"
#include "temp_dir.h"

#include <gtest/gtest.h>
#include <filesystem>
#include <regex>
#include <sstream>

namespace {

// The panel's own database, on the server where customers have theirs.
class PanelDatabase {
  public:
    PanelDatabase() {
        server.query(
            "create database qrd; use qrd; "
            "create table misc (param varchar(255) primary key, val longtext); "
            "create table Components (name varchar(255), version varchar(255)); "
            "create user admin@localhost identified by 'panel-in-a-box'; "
            "grant all on qrd.* to admin@localhost");
        install("mysql", "'10.11.3'");
        install("postgresql-server", "'8.1.9-2'");
    }

    // version: as in SQL; "no" for a package that is not there.
    void install(const std::string& package, const std::string& version) {
        server.query("use qrd; delete from Components where name = '" + package + "'");
        if (version != "no") {
            server.query("use qrd; insert into Components values ('" + package + "', " + version +
                         ")");
        }
    }

    TempDir dir = TempDir::inMemory();
    MariaDbServer server{dir.path("mariadb")};
};

TEST(Databases, AreRestoredWithTheirUsers) {
    const PanelDatabase panel;
    runCases("databases/restored.txt");
}

TEST(Databases, FailNoFurtherThanTheyMust) {
    const PanelDatabase panel;
    runCases("databases/failing.txt");
}

// Catches: a dump that goes to a server that is too old for it, a gate that is shut for one that is
// not, and a version that is asked for where it does not count.
TEST(Databases, GoToServersThatAreNotOlder) {
    // Under what ends them: the server's type and version as it is kept, the dump's or "-".
    const std::pair<std::string, std::vector<const char*>> kRows[] = {
        {"IncompatibleDbPasswordVersion",
         {"mysql '4.1.0-alpha' 4.1.1", "mysql '4.0.27' -", "mysql '3.23' 5.0", "mssql '3.23' 5.0"}},
        {"",
         {"mysql '4.1.1' 10.11", "mysql '' 5.0", "mysql no 4.1.0", "mysql no 3",
          "postgresql '8.1.9-2' 8.1.9", "postgresql '10.1.0' 9.6", "postgresql '8.1' 9",
          "postgresql 'x8.1.9' 9", "postgresql no -"}},
        {"CantReadPkgVersion", {"mysql null 5.0", "mysql no 4.1.1", "postgresql no 9"}},
        {"PostgresMigrationIsImpossibleToLowerVersion",
         {"postgresql '8.1.9-2' 8.2", "postgresql '8.1.9-2' 8.1.10",
          "postgresql '8.1.9-2' 1:8.1"}}};
    PanelDatabase panel;
    for (const auto& [code, rows] : kRows) {
        for (const char* const row : rows) {
            SCOPED_TRACE(row);
            std::istringstream words(row);
            std::string type, installed, version;
            words >> type >> installed >> version;
            panel.install("mysql", type == "postgresql" ? "no" : installed);
            panel.install("postgresql-server", type == "postgresql" ? installed : "no");
            Sandbox box;
            prepare(box, {"",
                          {{"before", "domain --create a.example\n"},
                           {"dump",
                            "<domain name='a.example' deployer-action='auxiliary'><databases>"
                            "<database name='shop' type='" +
                                type + (version == "-" ? "" : "' version='" + version) +
                                "'/></databases></domain>"}}});
            box.deploy();
            Lines expected{"success"};
            if (!code.empty()) {
                expected.push_back("domain a.example/database shop: FailedDatabaseDeployment > " +
                                   code);
            }
            EXPECT_EQ(codesOf(box), expected);
        }
    }
}

// The two servers, and a panel that makes on them what it is told to.
class RealServers {
  public:
    RealServers() {
        putPanel();
        putClient("mysql", "mariadb");
        // The program itself: what stands before it needs more of /etc than is open here.
        putClient("pg_restore", "/usr/lib/postgresql/*/bin/pg_restore");
        box.writeFile("etc/qrd/qrd.conf", "PRODUCT_ROOT_D /opt/qrd\nMYSQL_BIN_D " + kClients +
                                              "\nPGSQL_BIN_D " + kClients + "\n");
        postgresql.query("create role boss superuser login password 'secret-0'");
    }

    // How the clients were called, one a line.
    std::string clientCalls() const {
        static const std::regex call("Executing utility: " + kClients + "/(.*)");
        static const std::regex random("(backup_|migration-unpack-)\\w+");
        std::istringstream log(box.logText());
        std::string calls;
        std::smatch found;
        for (std::string line; std::getline(log, line);) {
            if (std::regex_search(line, found, call)) calls += found.str(1) + "\n";
        }
        return std::regex_replace(calls, random, "$1X");
    }

    // Where they stand: open to those who have no rights.
    const std::string kClients = "/opt/qrd/clients";

    PanelDatabase panel;
    PostgreSqlServer postgresql{openTo(panel.dir).path("postgresql")};
    std::string port = std::to_string(postgresql.port());
    Sandbox box;

  private:
    // The server's user must get through.
    static const TempDir& openTo(const TempDir& dir) {
        std::filesystem::permissions(dir.path(""), std::filesystem::perms(0711));
        return dir;
    }

    void writeProgram(const std::string& name, const std::string& script) {
        box.writeFile(name, script);
        std::filesystem::permissions(box.statePath() + "/" + name, std::filesystem::perms(0755));
    }

    // In place of the panel's utility: what a panel does on the servers, and the utility itself.
    void putPanel() {
        const std::string utility =
            std::filesystem::path(Sandbox::deployer()).replace_filename("panel-utility");
        const std::string script = R"(#!/bin/bash
set -e
words=("$@") verb=$1 database=$2
while [ $# -gt 1 ]; do
  case $1 in -type) type=$2;; -add_user) added=$2;; -remove_user) gone=$2;; esac
  shift
done
mysql() { mariadb --no-defaults -u root -e "$1"; }
postgresql() { psql -q -h SOCKET -p PORT -U postgres -c "$1"; }
case $verb,$type,${added:+added},${gone:+gone} in
  --create,*) $type "create database $database";;
  --update,mysql,added,)
    mysql "grant all on $database.* to $added@localhost identified by '$QRD_PASSWORD'";;
  --update,postgresql,added,) postgresql "create role $added login password '$QRD_PASSWORD'";;
  --update,,,gone) mysql "drop user $gone@localhost";;
esac
exec -a database UTILITY "${words[@]}"
)";
        writeProgram(
            "opt/qrd/admin/vlib/api-cli/database.php",
            replaceAll(replaceAll(replaceAll(script, "SOCKET", postgresql.socket()), "PORT", port),
                       "UTILITY", utility));
    }

    // In place of a client: first called for "last" it waits for a stop; and it becomes the real
    // one.
    void putClient(const std::string& name, const std::string& client) {
        writeProgram(kClients.substr(1) + "/" + name,
                     "#!/bin/sh\ncase $* in -u*last) read -r word < " + kClients +
                         "/stopped;; esac\nexec " + client + " \"$@\"\n");
    }
};

// Room for the small dumps only; a stop for whoever waits for one; and the run.
constexpr char kScript[] = R"(
head -c 500000 /dev/zero > $S/full.sql && tar -cf $S/full.tar -C $S full.sql
mount -t tmpfs -o size=200k,mode=711 none /opt/qrd/RMK/tmp
mkfifo -m 666 /opt/qrd/clients/stopped
(exec 3> /opt/qrd/clients/stopped; kill -TERM $$; echo >&3) > /dev/null 2>&1 &
exec "$0" "$@")";

std::string outputOf(const ProcessResult& result) { return result.out + result.err; }

// Catches: rows that are not there, users who cannot log in, a temporary user who stays after a
// load, a failed load or one that was asked to stop, a fault that costs a sibling, and a password
// that others could read.
TEST(Databases, ComeBackOnRealServers) {
    RealServers real;
    const std::string port = real.port;
    const std::string socket = real.postgresql.socket();
    Sandbox& box = real.box;
    prepare(box, casesIn(replaceAll(sourceFile("tests/system/databases/servers.txt"), "SERVER",
                                    socket + ":" + port))
                     .front());
    addExampleArchives(box);
    box.deployIn(kScript);
    const std::string failed = ": FailedDatabaseDeployment > ";
    const std::string database = "domain a.example/database ";
    EXPECT_EQ(codesOf(box), Lines({"success", database + "wrong" + failed + "ExecCmd::Failed",
                                   database + "full" + failed + "UnExpectedResult"}));

    const std::string titles = "Обломов\nВойна и мир\n";
    EXPECT_EQ(outputOf(box.runCommand({"env", "MYSQL_PWD=secret-1", "mariadb", "--no-defaults",
                                       "-u", "ann", "-N", "--default-character-set=utf8", "shop",
                                       "-e", "select title from book"})),
              titles + "Lost \\\\ \"found\"; \\\\! id\n");
    EXPECT_EQ(outputOf(Process({"psql", "-h", "127.0.0.1", "-p", port, "-U", "ann", "-d", "wiki",
                                "-Atc", "select title from work"},
                               {"PATH=/usr/bin:/bin", "PGPASSWORD=secret-2"})
                           .wait()),
              titles + "Анна Каренина\n");
    EXPECT_EQ(real.panel.server.query("select count(*) from last.t"), "2\n");
    EXPECT_EQ(real.panel.server.query("show databases like 'never'"), "");
    EXPECT_EQ(real.panel.server.query("select user from mysql.user where user like 'backup%'"), "");

    // This client takes --no-defaults in front of all else only, and is called again.
    const auto mysql = [](const std::string& name) {
        return "mysql -u backup_X -h localhost --no-defaults " + name +
               "\nmysql --no-defaults -u backup_X -h localhost " + name + "\n";
    };
    EXPECT_EQ(real.clientCalls(),
              mysql("shop") + mysql("wrong") +
                  "pg_restore -d wiki --use-set-session-authorization -h " + socket + " -p " +
                  port + " /opt/qrd/RMK/tmp/migration-unpack-X/katalog.dump\n" + mysql("last"));
    expectNoPasswordInArguments(box);
}

}  // namespace
