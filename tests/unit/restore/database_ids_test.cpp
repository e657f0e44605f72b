// What the deployers keep of what they restored: no dump shows it.

#include "deploying.h"
#include "restore/objects/database.h"
#include "restore/objects/database_user.h"

using namespace zelvo;

namespace {

class DatabaseIds : public test::Deploying {
  protected:
    DatabaseIds() { utility(kApi + "database-registrar.php", "echo '<db-server/>'"); }

    static void database(const std::string& script) { utility(kApi + "database.php", script); }

    // What is kept of these `database` elements: "ID(SAPP-PARAM) ...| DATABASE:USER ...", and "!"
    // behind it if a user failed.
    static std::string keptOf(const std::string& elements) {
        RestoredDatabases restored;
        const test::Element dump("<dump>" + elements + "</dump>");
        deployEach(dump, "*", DatabaseDeployer("a.example", restored));
        std::string kept;
        for (const auto& database : restored.databases) {
            kept += database.id + "(" + database.sappParam + ") ";
        }
        kept += "|";
        for (const auto& user : restored.users) kept += " " + user.databaseId + ":" + user.id;
        return kept + (restored.userFailed ? "!" : "");
    }

  private:
    static inline const std::string kApi = "vlib/api-cli/";
};

}  // namespace

// Catches: a user who is told of another database, and one database's users that replace those of
// another.
TEST_F(DatabaseIds, AreKeptOfAllDatabases) {
    database(
        "case \"$*\" in *-add_user*) echo New database user ID = ${2#d}$4;;\n"
        "*fail*) exit 1;; *) echo \"<database-id>${2#d}</database-id>\";; esac");
    EXPECT_EQ(keptOf("<database name='d1' type='mysql' version='3' sapp-param='main'>"
                     "<dbuser name='5'/><dbuser name='6'/></database>"
                     "<database name='fail' version='3'><dbuser name='4'/></database>"
                     "<database name='d2' version='3'><dbuser name='7'/></database>"
                     "<database name='d3' version='3' deployer-action='update'>"
                     "<dbuser name='8'/></database>"),
              "1(main) 2() | 1:15 1:16 2:27 :38");
}

TEST_F(DatabaseIds, OfUsersAreTheWholeAnswer) {
    const std::pair<std::string, std::string> answers[] = {
        {"printf 'New database user ID = 12'", "| 1:12"},
        {"printf '\\n \\tNew database user ID = 12 \\n\\n'", "| 1:12"},
        {"", "|"},
        {"echo New database user ID = x", "|"},
        {"echo New database user ID = 12 and more", "|"},
        {"printf 'A warning\\nNew database user ID = 12\\n'", "|"},
        {"echo 'New database user ID =  12'", "|"},
        {"exit 1", "|!"}};
    for (const auto& [answer, kept] : answers) {
        database("case \"$*\" in *-add_user*) " + answer +
                 ";; *) echo '<database-id>1</database-id>';; esac");
        EXPECT_EQ(keptOf("<database name='d' version='3'><dbuser name='u'/></database>"),
                  "1() " + kept)
            << answer;
    }
}
