#include "content/regular_unpacker.h"

#include <regex>

#include "mariadb.h"
#include "postgresql.h"
#include "unpacking.h"

using namespace test;
using zelvo::DbServerAccess;

namespace {

constexpr const char* kPassword = "s3cr3t 'of' the \"shop\"";

// The clients are the distribution's own, behind a script that notes their arguments. A password of
// "none" says that there is no server.
class UnpackDbTest : public Unpacking {
  protected:
    UnpackDbTest() {
        std::filesystem::remove(box("calls"));
        const std::string note = "for a; do printf '%s\\n' \"$a\"; done >> " + box("calls") +
                                 "\n[ \"$MYSQL_PWD$PGPASSWORD\" = none ] && exit\n";
        writeProgram(box("bin/mysql"), note + "exec mariadb \"$@\"\n");
        writeProgram(box("bin/pg_restore"), note + "exec /usr/bin/pg_restore \"$@\"\n");
    }
    // No way out may leave the dump behind.
    ~UnpackDbTest() override { EXPECT_TRUE(isTmpEmpty()); }

    std::string fault(const DbServerAccess& server) {
        return faultOf([&] { unpacker.unpackDb(cid, server, "shop"); });
    }

    // The arguments of the client, one a line; the path of the temporary directory is "TMP".
    static std::string calls() {
        return std::regex_replace(contentOf(box("calls")),
                                  std::regex(box("tmp/migration-unpack-.{6}")), "TMP");
    }

    zelvo::RegularUnpacker unpacker;
};

}  // namespace

TEST_F(UnpackDbTest, LoadsIntoMariaDb) {
    MariaDbServer server(dir.path("mariadb"));
    const std::string port = std::to_string(server.port());
    server.query("create database shop; grant all on shop.* to loader@'127.0.0.1' identified by '" +
                 std::string("s3cr3t \\'of\\' the \"shop\"'"));
    writeArchive(tarOf({{"./dump of shop.sql", '0', "",
                         "create table t (a text);\ninsert into t values ('one'), ('two');\n"}}));
    DbServerAccess access{"mysql", "loader", kPassword, "127.0.0.1", port};
    EXPECT_EQ(fault(access), "");
    EXPECT_EQ(server.query("select a from shop.t"), "one\ntwo\n");
    const std::string address = "-u\nloader\n-h\n127.0.0.1\n-P\n" + port + "\n";
    EXPECT_EQ(calls(), address + "--no-defaults\nshop\n--no-defaults\n" + address + "shop\n")
        << "this client takes the option in front of all else only";

    // Commands of the client's own, and statements that fail behind which it goes on.
    const std::string touched = dir.path("touched");
    writeArchive(tarOf({{"d.sql", '0', "",
                         "\xEF\xBB\xBFinsert into t values ('three');\n\\! touch " + touched +
                             "\nsystem touch " + touched + "\ninsert into none values (1);\n"}}));
    EXPECT_THAT(fault(access), testing::HasSubstr("ERROR "));
    EXPECT_EQ(server.query("select a from shop.t"), "one\ntwo\nthree\n");
    EXPECT_FALSE(std::filesystem::exists(touched));

    access.password = "wrong";
    EXPECT_THAT(fault(access), testing::AllOf(testing::StartsWith("ExecCmd::Failed: Execution of "),
                                              testing::HasSubstr("Access denied for user 'loader'"),
                                              testing::Not(testing::HasSubstr("wrong"))));
}

TEST_F(UnpackDbTest, LoadsIntoPostgreSql) {
    std::filesystem::permissions(dir.path(""), std::filesystem::perms(0711));
    PostgreSqlServer server(dir.path("postgresql"));
    const std::string port = std::to_string(server.port());
    server.query("create database shop");
    server.query("create table t (a text); insert into t values ('one'), ('two')", "shop");
    writeArchive(tarOf({{"shop.dump", '0', "", server.dump("shop")}}));
    server.query("drop table t", "shop");
    server.query("create role loader superuser login password 's3cr3t ''of'' the \"shop\"'");
    DbServerAccess access{"postgresql", "loader", kPassword, "127.0.0.1", port};
    EXPECT_EQ(fault(access), "");
    EXPECT_EQ(server.query("select a from t", "shop"), "one\ntwo\n");
    EXPECT_EQ(calls(), "-d\nshop\n--use-set-session-authorization\n-h\n127.0.0.1\n-p\n" + port +
                           "\nTMP/shop.dump\n");
    access.password = "wrong";
    EXPECT_THAT(fault(access), testing::HasSubstr("password authentication failed"));
}

TEST_F(UnpackDbTest, LeavesDefaultsToTheClient) {
    writeArchive(tarOf({{"d"}}));
    const struct {
        DbServerAccess server;
        const char* arguments;
    } rows[] = {
        {{"mysql", "u", "none", "localhost", ""}, "-u\nu\n-h\nlocalhost\n--no-defaults\nshop\n"},
        {{"mysql", "u", "none", "", "1"}, "-u\nu\n-P\n1\n--no-defaults\nshop\n"},
        {{"postgresql", "u", "none", "localhost", "1"},
         "-d\nshop\n--use-set-session-authorization\n-p\n1\nTMP/d\n"},
        {{"postgresql", "u", "none", "", ""}, "-d\nshop\n--use-set-session-authorization\nTMP/d\n"},
        {{"mssql", "u", "none", "h", "1"}, ""}};
    for (const auto& row : rows) {
        std::filesystem::remove(box("calls"));
        EXPECT_EQ(fault(row.server), "");
        EXPECT_EQ(calls(), row.arguments);
    }
}

// Catches an archive that runs commands of its own in the client, which reads lines and has one
// that starts a shell, or that shows a file of this server in the client's complaint.
TEST_F(UnpackDbTest, TakesNothingButOneFileOfTheArchive) {
    const std::string text = "UnExpectedResult: The resutl of operaion is unexpected: ";
    const DbServerAccess server{"mysql", "u", "none", "", ""};
    EXPECT_EQ(fault(server), text + "empty extract file list");
    const std::string other = text + "the archive does not hold one database dump";
    writeArchive(tarOf({{"a.sql"}, {"system touch x"}}));
    EXPECT_EQ(fault(server), other);
    EXPECT_EQ(fault({"mssql", "u", "none", "", ""}), "");
    writeArchive(tarOf({{"a.sql", '2', "/etc/shadow"}}));
    EXPECT_EQ(fault(server), other);
    writeArchive(tarOf({}));
    EXPECT_EQ(fault(server), other);
    EXPECT_EQ(calls(), "");
}
