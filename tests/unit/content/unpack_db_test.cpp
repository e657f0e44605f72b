#include "content/regular_unpacker.h"

#include <regex>

#include "mariadb.h"
#include "unpacking.h"

using namespace test;
using zelvo::DbServerAccess;

namespace {

// The clients are the distribution's own, behind a script. A password of "none" says that there is
// no server.
class UnpackDbTest : public Unpacking {
  protected:
    UnpackDbTest() {
        std::filesystem::permissions(dir.path(""), std::filesystem::perms(0711));
        const std::string note = "[ \"$MYSQL_PWD$PGPASSWORD\" = none ] && exit\n";
        writeProgram(box("bin/mysql"), note + "exec mariadb \"$@\"\n");
        writeProgram(box("bin/pg_restore"), note + "exec /usr/bin/pg_restore \"$@\"\n");
    }
    // No way out may leave the dump behind.
    ~UnpackDbTest() override { EXPECT_TRUE(isTmpEmpty()); }

    std::string fault(const DbServerAccess& server) {
        return faultOf([&] { unpacker.unpackDb(cid, server, "shop"); });
    }

    // How the client was called, one a line; the path of the temporary directory is "TMP".
    std::string calls() {
        const std::string head = "Executing utility: " + box("bin/");
        std::string text;
        for (const std::string& line : log.lines) {
            if (line.starts_with(head)) text += line.substr(head.size()) + "\n";
        }
        log.lines.clear();
        return std::regex_replace(text, std::regex(box("tmp/migration-unpack-.{6}")), "TMP");
    }

    zelvo::RegularUnpacker unpacker;
};

}  // namespace

// Catches a client that does for a dump what root can do: read a file, write one, start a shell;
// and one that shows a dump what this process was started with.
TEST_F(UnpackDbTest, GivesAHostileDumpNothing) {
    MariaDbServer server(dir.path("mariadb"));
    server.query("create database shop; grant all on shop.* to loader@localhost identified by 'x'");
    const std::string secret = dir.write("secret", "of root\n");
    std::filesystem::permissions(secret, std::filesystem::perms(0600));
    const std::string open = dir.path("open");
    std::filesystem::create_directory(open);
    std::filesystem::permissions(open, std::filesystem::perms(0777));
    const auto load = [&](const std::string& sql) {
        writeArchive(tarOf({{"d.sql", '0', "", "create or replace table t (a text);\n" + sql}}));
        const std::string told = fault({"mysql", "loader", "x", "localhost", ""});
        return told + server.query("select a from shop.t");
    };
    // The last line of each shows that the client came to it.
    const std::string end = "\ninsert into t values ('end');\n";
    EXPECT_THAT(load("load data local infile '" + secret + "' into table t;" + end),
                testing::AllOf(testing::HasSubstr("Errcode: 13"), testing::EndsWith("end\n"),
                               testing::Not(testing::HasSubstr("of root"))));
    EXPECT_THAT(load("source " + secret + end), testing::Not(testing::HasSubstr("of root")));
    setenv("ZT_SECRET", "of root", 1);
    EXPECT_THAT(
        load("load data local infile '/proc/self/environ' into table t;" + end),
        testing::AllOf(testing::HasSubstr("PATH="), testing::Not(testing::HasSubstr("ZT_"))));
    EXPECT_THAT(load("load data local infile '/proc/" + std::to_string(getpid()) +
                     "/cmdline' into table t;" + end),
                testing::HasSubstr("Errcode: 2"));
    load("\\! touch " + open + "/a\nsystem touch " + open + "/b\npager cat > " + open +
         "/c\nselect 1;\ntee " + open + "/d\nselect 1;" + end);
    EXPECT_TRUE(std::filesystem::is_empty(open));
    // What the client gets is not what makes the load fail.
    EXPECT_EQ(load(end), "end\n");

    std::filesystem::permissions(box("tmp"), std::filesystem::perms(0700));
    EXPECT_THAT(load(end), testing::HasSubstr(box("tmp") + " of temporary files is closed to"));
}

TEST_F(UnpackDbTest, LeavesDefaultsToTheClient) {
    writeArchive(tarOf({{"d"}}));
    const struct {
        DbServerAccess server;
        const char* arguments;
    } rows[] = {
        {{"mysql", "u", "none", "localhost", ""}, "mysql -u u -h localhost --no-defaults shop\n"},
        {{"mysql", "u", "none", "", "1"}, "mysql -u u -P 1 --no-defaults shop\n"},
        {{"postgresql", "u", "none", "localhost", "1"},
         "pg_restore -d shop --use-set-session-authorization -p 1 TMP/d\n"},
        {{"postgresql", "u", "none", "", ""},
         "pg_restore -d shop --use-set-session-authorization TMP/d\n"},
        {{"mssql", "u", "none", "h", "1"}, ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(fault(row.server), "");
        EXPECT_EQ(calls(), row.arguments);
    }
}

// Catches a name that the client reads as commands, and files that are passed over in silence.
TEST_F(UnpackDbTest, TakesTheFirstFileByAPlainName) {
    const DbServerAccess server{"postgresql", "u", "none", "", ""};
    const std::string call = "pg_restore -d shop --use-set-session-authorization TMP/";
    for (const auto& [name, taken] : {std::pair<const char*, const char*>{"./a/b_+@1-2.SQL", ""},
                                      {"a;\nsystem b", "database-dump"},
                                      {"\\\303\\ x\x01", "database-dump"},
                                      {"-d", "database-dump"}}) {
        writeArchive(tarOf({{"a/", '5', "", "", 0700}, {name}}));
        EXPECT_EQ(fault(server), "") << name;
        EXPECT_EQ(calls(), call + (*taken == 0 ? name : taken) + "\n");
    }
    writeArchive(tarOf({{"one"}, {"a/", '5'}, {"a/two\n"}, {"three"}}));
    EXPECT_EQ(fault(server),
              "UnExpectedResult: The resutl of operaion is unexpected: the archive "
              "holds more than the database dump; not loaded: a/two\n, three");
    EXPECT_EQ(calls(), call + "one\n");
}

// Catches an archive that shows a file of this server in the client's complaint.
TEST_F(UnpackDbTest, TakesNothingButOneFileOfTheArchive) {
    const std::string text = "UnExpectedResult: The resutl of operaion is unexpected: ";
    const DbServerAccess server{"mysql", "u", "none", "", ""};
    EXPECT_EQ(fault(server), text + "empty extract file list");
    const std::string other = text + "the archive does not hold one database dump";
    writeArchive(tarOf({{"b.sql"}, {"a.sql", '1', "b.sql"}}));
    EXPECT_EQ(fault(server), text + "the database dump has more than one name");
    writeArchive(tarOf({{"a.sql", '2', "/etc/shadow"}}));
    EXPECT_EQ(fault(server), other);
    writeArchive(tarOf({{"a/", '5'}}));
    EXPECT_EQ(fault(server), other);
    writeArchive(tarOf({}));
    EXPECT_EQ(fault(server), text + "empty extract file list");
    EXPECT_EQ(calls(), "");
}
