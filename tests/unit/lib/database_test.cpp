#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mysql.h>
#include <sys/mount.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <thread>

#include "lib/components.h"
#include "lib/get_param.h"
#include "lib/put.h"
#include "lib/query_db.h"
#include "mariadb.h"
#include "temp_dir.h"
#include "told.h"

namespace {

using std::string;
using testing::StartsWith;
using Connection = std::unique_ptr<MYSQL, decltype(&mysql_close)>;

constexpr char kTables[] = R"(
    create database qrd;
    use qrd;
    create table misc (param varchar(255) primary key, val longtext);
    create table Components (name varchar(255), version varchar(255));
    create table clients (id int primary key, login varchar(255));
    create table domains (id int primary key, name varchar(255));
    create user admin@localhost identified by 'secret';
    grant all on qrd.* to admin@localhost;
)";

// A server with the panel's tables, and an /etc with the password. One for each test, as a member:
// a child that a test lets exit must not take it down.
class Database : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(dir.path("etc/qrd"));
        dir.write("etc/passwd", "root:x:0:0:::\n");
        password("secret\n");
        ASSERT_EQ(0, mount(dir.path("etc").c_str(), "/etc", "none", MS_BIND, nullptr));
        server->query(kTables);
        _mysql41_compatible = -1;
    }
    void TearDown() override { umount2("/etc", MNT_DETACH); }

    void password(const string& content) { dir.write("etc/qrd/.qrd.shadow", content); }

    void setting(const string& value) {
        server->query("use qrd; replace into misc values ('mysql41_compatible', " + value + ")");
    }

    // The panel's connections; a closed one goes a moment after it was closed.
    string openConnections() {
        string count;
        for (int i = 0; i < 200 && count != "0\n"; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(i));
            count = server->query(
                "select count(*) from information_schema.processlist where user = 'admin'");
        }
        return count;
    }

    TempDir dir = TempDir::inMemory();
    std::unique_ptr<MariaDbServer> server = std::make_unique<MariaDbServer>(dir.path("db"));
};

Connection connectTo(char* reason, std::size_t size) {
    return {zelvo_db_connect(reason, size), &mysql_close};
}

// The reason why there is no connection, "" if there is one.
string refusal() {
    char reason[1024] = "unset";
    return connectTo(reason, sizeof(reason)) != nullptr ? "" : reason;
}

// Catches: a password cut wrong, a reason lost, a connection left behind by a failure.
TEST_F(Database, ConnectsWithThePasswordLineOrSaysWhyNot) {
    EXPECT_EQ("", refusal());
    password("secret");
    EXPECT_EQ("", refusal());
    server->query("set password for admin@localhost = password('" + string(99, 'x') + "')");
    password(string(120, 'x') + "\n");
    EXPECT_EQ("", refusal());

    password("");
    const string denied =
        "Unable to connect to Zelvo Database: Access denied for user "
        "'admin'@'localhost' (using password: NO)";
    EXPECT_EQ(denied, refusal());
    char small[] = "0123456789abc";
    EXPECT_EQ(nullptr, db_connect_nothrow(small, 10));
    EXPECT_EQ(string("Unable to\0abc", 13), string(small, 13));
    EXPECT_EQ(denied + "\n", printedBy([] { EXPECT_EQ(nullptr, db_connect()); }));
    EXPECT_EQ(denied + "\nUnable to connect to the mysql database\n",
              printedBy([] { EXPECT_EQ(nullptr, get_param("a", nullptr)); }));
    EXPECT_EQ(denied + "\n", printedBy([] { EXPECT_EQ("", zelvo::QueryDb("select 1")); }));
    _mysql41_compatible = -1;
    EXPECT_EQ(denied + "\n", printedBy([] { EXPECT_EQ(-1, db_is_mysql41_compatible()); }));

    unlink("/etc/qrd/.qrd.shadow");
    EXPECT_EQ("Unable to open admin password file: No such file or directory", refusal());
    std::filesystem::create_directory("/etc/qrd/.qrd.shadow");
    EXPECT_EQ("Unable to read admin password file: Is a directory", refusal());
    EXPECT_EQ("0\n", openConnections());
    server.reset();
    std::filesystem::remove("/etc/qrd/.qrd.shadow");
    password("secret");
    EXPECT_THAT(refusal(), StartsWith("Unable to connect to Zelvo Database: Can't connect to"));
}

// Catches: a wrong comparison of the version or the setting, names sent to a server without them.
TEST_F(Database, ChoosesTheCharacterSetByVersionAndSetting) {
    const auto check = [](int compatible, const string& names) {
        char reason[1024];
        _mysql41_compatible = -1;
        const Connection connection = connectTo(reason, sizeof(reason));
        EXPECT_STREQ("", reason);
        EXPECT_EQ(compatible, _mysql41_compatible);
        EXPECT_EQ(names + "0", get_param_query("select concat(@@character_set_client, "
                                               "0 + @@foreign_key_checks)",
                                               connection.get()));
        _mysql41_compatible = -1;
        EXPECT_EQ(compatible, db_is_mysql41_compatible());
    };
    check(0, "binary");
    for (const auto& [value, compatible] :
         {std::pair("'false'", 0), {"''", 0}, {"null", 0}, {"'true'", 1}, {"'False'", 1}}) {
        SCOPED_TRACE(value);
        setting(value);
        check(compatible, compatible == 1 ? "utf8mb3" : "binary");
    }
    setting("'true'");
    for (const auto& [version, names] : {std::pair("3.23.58", "utf8mb4"),
                                         {"4.0.30", "utf8mb4"},
                                         {"4.1.22", "utf8mb3"},
                                         {"40.1", "utf8mb3"}}) {
        SCOPED_TRACE(version);
        server.reset();
        server = std::make_unique<MariaDbServer>(dir.path("db"),
                                                 std::vector{string("--version=") + version});
        // The names of an old server are those that the client library begins with.
        check(names == string("utf8mb3") ? 1 : 0, names);
    }
}

// Catches: a value that leaves its quotes, an overrun buffer, a failure taken for no value.
TEST_F(Database, ReadsAndStoresValues) {
    const string values[] = {"plain",           R"(it's "quoted" \ and \' '; drop table misc; --)",
                             "\n\t%_",          "gr\u00FC\u00DFe",
                             string(4095, 'v'), ""};
    for (const char* mode : {"", "NO_BACKSLASH_ESCAPES"}) {
        server->query(string("set global sql_mode = '") + mode + "'");
        for (const string& value : values) {
            EXPECT_EQ(0, put_param(value.substr(0, 99).c_str(), value.c_str(), nullptr));
            EXPECT_EQ(value, get_param(value.substr(0, 99).c_str(), nullptr));
        }
    }
    EXPECT_EQ(0, put_param("plain", nullptr, nullptr));
    EXPECT_STREQ("", get_param("plain", nullptr));
    EXPECT_STREQ("", get_param("missing", nullptr));
    server->query(
        "use qrd; insert into clients values (7, 'bob'), (9, 'ann'); "
        "insert into domains values (7, 'b.example'); "
        "insert into misc values ('long', repeat('w', 5000000))");
    EXPECT_EQ(string(4095, 'w'), get_param("long", nullptr));
    char reason[1024];
    const Connection connection = connectTo(reason, sizeof(reason));
    EXPECT_STREQ("9", get_param_simple("ann", "clients", "login", "id", connection.get()));
    EXPECT_STREQ("ann", get_param_from_bigquery("select 1, login from clients where id > 7",
                                                connection.get(), 1));
    EXPECT_STREQ("", get_param_from_bigquery("select 1", connection.get(), 9999));
    EXPECT_STREQ("", get_param_query("set @a = 1", connection.get()));
    EXPECT_EQ(10U, get_free_id("clients", connection.get()));
    EXPECT_EQ(8U, get_free_id("domains", nullptr));
    server->query("delete from qrd.domains where id > 7");
    EXPECT_EQ("bob,bob,b.example,,",
              zelvo::GetNameFromDB("client", 7) + "," + zelvo::GetNameFromDB("reseller", 7) + "," +
                  zelvo::GetNameFromDB("domain", 7) + "," + zelvo::GetNameFromDB("domain", 8) +
                  "," + zelvo::GetNameFromDB("user", 7));
    server->query("delete from qrd.domains");
    EXPECT_EQ(1U, get_free_id("domains", nullptr));
}

// Catches: a failed query that is silent, kills the process or leaves its own connection open.
TEST_F(Database, ReportsQueriesThatFail) {
    const string head = "Unable to query parameter by query ";
    EXPECT_EQ(head + "SELECT max(id) FROM none: Table 'qrd.none' doesn't exist\n",
              printedBy([] { EXPECT_EQ(0U, get_free_id("none", nullptr)); }));
    char reason[1024];
    Connection connection = connectTo(reason, sizeof(reason));
    server->query("kill user admin@localhost");
    EXPECT_THAT(
        printedBy([&] { EXPECT_EQ(nullptr, get_param_query("select 1", connection.get())); }),
        StartsWith(head + "select 1: "));
    connection.reset();
    server->query("drop table qrd.misc; create table qrd.misc (param int, val int)");
    EXPECT_THAT(printedBy([] { EXPECT_EQ(-1, put_param("a'b", "secret", nullptr)); }),
                "Unable to store parameter a'b: Incorrect integer value: 'a'b' for column "
                "`qrd`.`misc`.`param` at row 1\n");
    EXPECT_EQ("0\n", openConnections());
}

TEST_F(Database, GivesVersionsOfPackages) {
    server->query(
        "use qrd; insert into Components values ('mail''s', '1.2-3'), "
        "('absent', 'not_installed'), ('empty', ''), ('twice', '1'), ('twice', '1'), "
        "('none', null)");
    char version[4] = "abc";
    get_pkg_version("mail's", version, sizeof(version));
    EXPECT_STREQ("1.2", version);
    EXPECT_TRUE(is_package_installed("mail's") && is_package_installed("empty"));
    EXPECT_FALSE(is_package_installed("absent"));

    char reason[100];
    const auto refuses = [&](const char* name, const string& text) {
        const auto ended = testing::ExitedWithCode(1);
        EXPECT_EXIT(get_pkg_version(name, version, sizeof(version)), ended, "^" + text + "\n$");
        EXPECT_EXIT(is_package_installed(name), ended, "^" + text + "\n$");
        EXPECT_EQ("", printedBy([&] {
                      EXPECT_FALSE(is_package_installed_silent(name));
                      EXPECT_FALSE(try_pkg_version(name, reason, sizeof(reason)));
                  }));
        EXPECT_THAT(reason, testing::MatchesRegex(text));
    };
    EXPECT_TRUE(is_package_installed_silent("mail's"));
    EXPECT_FALSE(is_package_installed_silent("absent"));
    refuses("twice", "Duplicate record in Components table for package twice");
    refuses("no\\", "Package 'no\\\\' is not found in Components table");
    refuses("none", "NULL version for package 'none' in database");
    EXPECT_EQ("0\n", openConnections());
}

}  // namespace
