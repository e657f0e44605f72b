#include <regex>

#include "repository/discovered_items.h"
#include "repository_rig.h"

namespace zelvo {
namespace {

using Rotation = RepositoryRig;

// Files that look like backups of the masks below and are none.
const char kBeside[] =
    "b/pp_1203011530.tgz b/p_x_1203011530.tgz b/p_120301153.tgz b/p_12030115301.tgz "
    "b/p_1203011530.tgz.bak b/p_1203011530.tgzx b/p_1203011530.tgz1x b/p_1203011530.tar "
    "b/xp_1203011530.tgz b/p1203011530.tgz b/_1203011530.tgz b/p_1203011530 b/p_1203011529.tgz3 "
    "b/p_1203011528.tgz/ b/p_1203011527.tgz/file b/sub/p_1203011530.tgz b/p_info_1203011530.xml "
    "b/p_1203011530.tgz99999999999 p_1203011530.tgz p_info_1203011500.xml b/p_y_1203011500.tgz ";

// Catches: a rotation that removes or counts a file beside its mask.
TEST_F(Rotation, OfFilesTouchesNothingBesideItsMask) {
    const std::string oldest = "b/p_1203011530.tgz b/p_1203011530.tgz1 b/p_1203011530.tgz12 ";
    const std::string middle = "b/p_1203011531.tgz ";
    const std::string newest = "b/p_1301011530.tgz b/p_1301011530.tgz2 ";
    const struct {
        const char* mask;
        int keep;
        std::string left;
    } rows[] = {
        {"p.tgz", 3, oldest + middle + newest},
        {"p.tgz", 2, middle + newest},
        {"p.tgz", 1, newest},
        {"p.tgz", 0, ""},
        {"p.tgz", 99, oldest + middle + newest},
        {"p.tgz", -1, oldest + middle + newest},
        {"b/p.tgz", 0, oldest + middle + newest},
        {"p.tgz1", 0, oldest + middle + newest},
        {"p_y.tgz", 0, oldest + middle + newest},
        {"q.tgz", 0, oldest + middle + newest},
        {".", 0, oldest + middle + newest},
        {"", 0, oldest + middle + newest},
    };
    for (const auto& row : rows) {
        std::filesystem::remove_all(dir_.path("r"));
        make(kBeside + oldest + middle + newest);
        dir_.write("r/p_info_1203011500.xml",
                   "<a><cid path='b'><content-file>p_y_1203011500.tgz</content-file></cid></a>");
        messageOf([&] { repository_.RotateFileBackup("b", row.mask, row.keep); });
        EXPECT_EQ(sorted(kBeside + row.left), files()) << row.mask << row.keep;
    }
    EXPECT_TRUE(
        log_.holds("Rotation: the file 'xp_1203011530.tgz' has invalid rotation prefix 'p'"));
    EXPECT_TRUE(log_.holds("Rotation: the file 'p_1203011530.tar' does not satisfy mask"));
    EXPECT_TRUE(log_.holds("Find list of backups by mask 'p_YYMMDDHHMM.tgz*'"));
    EXPECT_TRUE(log_.holds("Found backup: '1203011530', file 'p_1203011530.tgz'"));
    EXPECT_TRUE(log_.holds("Rotation: The backup 'p_1203011530.tgz'have been remove"));
}

TEST_F(Rotation, GoesOnBehindWhatCannotBeRemoved) {
    std::vector<std::string> lines;
    std::vector<std::string> asked;
    removeOldest(
        {{"3", {"c"}}, {"1", {"a"}}, {"2", {"b"}}}, 1,
        "R:", [&](const std::string& line) { lines.push_back(line); },
        [&](const std::string& name) {
            asked.push_back(name);
            if (name == "a") throw EXC(RepositoryError) % "no";
            throw 1;
        });
    EXPECT_EQ((Paths{"a", "b"}), asked);
    EXPECT_EQ((Paths{"Rotation: Remove backup:", "R:Cannot delete backup 'a'due to errors above",
                     "Rotation: Remove backup:", "R:Cannot delete backup 'b'due to unknown error"}),
              lines);
}

// Catches: a rotation that counts or removes what is another owner's, broken, or part of a dump of
// more.
TEST_F(Rotation, OfStructuredBackupsTouchesNoOther) {
    const auto build = [&] {
        std::filesystem::remove_all(dir_.path("r"));
        make("c/7/phosting/file");
        for (const char* label : {"1203011530", "1203011531", "1203011532"}) {
            makeDump(std::string("c/7/p_info_") + label + ".xml", "O");
            make(std::string("c/7/p_x_") + label + ".tgz c/7/phosting/p_y_" + label + ".tgz");
        }
        makeDump("c/7/p_info_1203011501.xml", "other");
        makeDump("c/7/p_info_1203011502.xml", "O", "<other/>");
        makeDump("c/7/p_info_1203011503.xml", "O");
        repository_.SetDiscoveredItem("c/7/p_info_1203011503.xml", D_ITEM_OWNER, "other");
        makeDump("c/7/q_info_1203011504.xml", "O");
        make(
            "c/7/p_info_1203011505.xml c/7/p_info_12030115.xml c/7/p_info_1203011530.txt "
            "c/7/p_info_1203011506.xml/ c/8/p_x_1203011530.tgz c/7/q_x_1203011530.tgz");
    };
    const struct {
        const char* owner;
        const char* prefix;
        int keep;
        Paths gone;
    } rows[] = {
        {"O", "c/7/p_info", 3, {}},
        {"O", "c/7/p_info", 2, {"1203011530"}},
        {"O", "c/7/p_info", 0, {"1203011530", "1203011531", "1203011532"}},
        {"O", "c/7/p_info", -1, {}},
        {"O", "c/7/p", 0, {}},
        {"", "c/7/p_info", 0, {}},
        {"P", "c/7/p_info", 0, {}},
    };
    for (const auto& row : rows) {
        build();
        messageOf([&] { repository_.RotateStructuredBackup(row.owner, row.prefix, 99); });
        std::string expected = files();
        for (const std::string& label : row.gone) {
            const std::regex gone("c/7/(p_info_" + label + "\\.xml|p[^ ]*" + label +
                                  "\\.tgz|\\.discovered/p_info_" + label + "/[^ ]*) ");
            expected = std::regex_replace(expected, gone, "");
        }
        messageOf([&] { repository_.RotateStructuredBackup(row.owner, row.prefix, row.keep); });
        EXPECT_EQ(expected, files()) << row.owner << row.prefix << row.keep;
    }
    build();
    makeDump("p_info_1203011530.xml", "O");
    repository_.RotateStructuredBackup("O", "c/7/p_info", 2);
    EXPECT_TRUE(std::filesystem::exists(dir_.path("r/c/7/p_x_1203011530.tgz")));
    for (const char* line : {"The backup : p_info_1203011502.xml is not valid!",
                             "Rotation: the file 'p_info_1203011501.xml' is not backup of owner O",
                             "file name 'p_info_12030115.xml' has invalid date prefix '12030115'",
                             "file name 'p_info_1203011530.txt' not ends with '.xml'",
                             "The file 'q_info_1203011504.xml' is not valid backup file name!",
                             "The backup list is empty. Nothing to rotate.",
                             "The backups count is less then rotation count. Nothing to rotate.",
                             "backup 'c/7/p_info_1203011530.xml' is part of another backup",
                             "Rotation:The backup 'p_info_1203011530.xml'have been remove"}) {
        EXPECT_TRUE(log_.holds(line)) << line;
    }
}

// Catches: a deletion that takes a file of another dump for its own.
TEST_F(Rotation, DeletesOneBackupAndNoFileOfAnother) {
    const std::string L = "_1203011530";
    const struct {
        std::string path;
        std::string before;
        std::string left;
    } rows[] = {
        {"c/p_info" + L + ".xml",
         "c/p_info_1203011530.xml c/p_x_1203011530.tgz c/p_x_1203011530.tgz1 "
         "c/d/p_y_1203011530.zip c/p_x_1203011531.tgz "
         "c/p_1203011530.tgz "
         "c/d/q_y_1203011530.tgz c/.discovered/p_info_1203011530/a "
         "c/.discovered/p_info_1203011531/a c/p_x_1203011530.txt e/p_x_1203011530.tgz",
         "c/p_1203011530.tgz c/p_x_1203011531.tgz c/d/q_y_1203011530.tgz "
         "c/.discovered/p_info_1203011531/a "
         "c/p_x_1203011530.txt e/p_x_1203011530.tgz"},
        // All that its object had; an empty directory of somebody else stays.
        {"c/7/p_info" + L + ".xml",
         "c/7/p_info_1203011530.xml c/7/d/e/p_y_1203011530.zip c/7/.discovered/p_info_1203011530/a "
         "c/7/f/p_y_1203011530.zip c/7/f/g/ .discovered/G_7",
         "c/7/f/g/ .discovered/G_7"},
        {"c/7/p_info" + L + ".xml", "c/7/p_info_1203011530.xml c/7/d/e/p_y_1203011530.zip", "c/"},
        // Part of another one, at any level above.
        {"c/1/d/2/p_info" + L + ".xml", "p_info_1203011530.xml c/1/d/2/p_info_1203011530.xml",
         "p_info_1203011530.xml c/1/d/2/p_info_1203011530.xml"},
        {"/c/p_info" + L + ".xml", "p_o_info_1203011530.xml c/p_info_1203011530.xml",
         "p_o_info_1203011530.xml c/p_info_1203011530.xml"},
        {".//c/./p_info" + L + ".xml", "c/p_info_1203011530.xml c/p_x_1203011530.tgz", ""},
        {"c/p_info" + L + ".xml",
         "q_info_1203011530.xml p_info_1203011531.xml c/p_info_1203011530.xml",
         "q_info_1203011530.xml p_info_1203011531.xml"},
        // Two dumps of a minute in one directory, one of them with its document lost.
        {"c/p_a_info" + L + ".xml",
         "c/p_a_info_1203011530.xml c/p_b_info_1203011530.xml c/p_a_x_1203011530.tgz "
         "c/p_b_x_1203011530.tgz c/p_x_1203011530.tgz c/d/p_b_y_1203011530.tgz "
         "c/.discovered/p_a_info_1203011530/a c/.discovered/p_c_info_1203011530/a "
         "c/p_c_x_1203011530.tgz",
         "c/p_b_info_1203011530.xml c/p_b_x_1203011530.tgz c/p_x_1203011530.tgz "
         "c/d/p_b_y_1203011530.tgz c/.discovered/p_c_info_1203011530/a c/p_c_x_1203011530.tgz"},
        {"c/p_info" + L + ".xml",
         "c/p_info_1203011530.xml c/p_b_info_1203011530.xml c/p_x_1203011530.tgz "
         "c/p_b_x_1203011530.tgz",
         "c/p_b_info_1203011530.xml c/p_b_x_1203011530.tgz"},
        // No such backup.
        {"c/p_info" + L + ".xml", "c/p_x_1203011530.tgz c/p_b_info_1203011530.xml",
         "c/p_x_1203011530.tgz c/p_b_info_1203011530.xml"},
        {"c/p_info_120301.xml", "c/p_info_120301.xml", "c/p_info_120301.xml"},
        {"c/../p_info" + L + ".xml", "p_info_1203011530.xml", "p_info_1203011530.xml"},
    };
    for (const auto& row : rows) {
        std::filesystem::remove_all(dir_.path("r"));
        make(row.before);
        messageOf([&] { repository_.DeleteBackup(row.path); });
        EXPECT_EQ(sorted(row.left), files()) << row.path << " of " << row.before;
    }
    std::filesystem::remove_all(dir_.path("r"));
    // Links lead to another object's dumps.
    make("c/p_info_1203011530.xml e/p_x_1203011530.tgz e/.discovered/p_info_1203011530/a");
    std::filesystem::create_symlink("../e", dir_.path("r/c/d"));
    std::filesystem::create_symlink("../e/.discovered", dir_.path("r/c/.discovered"));
    const std::string linked = "c/p_info_1203011530.xml";
    EXPECT_NE("", messageOf([&] { repository_.DeleteBackup(linked); }));
    EXPECT_EQ(".discovered/p_info_1203011530/a p_x_1203011530.tgz ", files(dir_.path("r/e")));
    // The document stays, so that the rest can be deleted later.
    EXPECT_TRUE(std::filesystem::exists(dir_.path("r/" + linked)));
    std::filesystem::remove_all(dir_.path("r"));
    // What the other document names is the other's, whatever its name and however it is written.
    const std::string own = "p_a_info_1203011530.xml";
    const std::string file = "p_a_x_1203011530.tgz";
    for (const auto& [dir, path, named] :
         {std::tuple{"n/", "d/./", "n/d/"}, std::tuple{"./n/", "", "n/"}, std::tuple{"", "", ""},
          std::tuple{"", ".", ""}, std::tuple{"", "./", ""}, std::tuple{"", "/", ""}}) {
        make(dir + own + " " + dir + file + " n/d/" + file);
        makeDump(std::string(dir) + "p_info_1203011530.xml", "O",
                 std::string("<admin><cid path='") + path + "'><content-file>" + file +
                     "</content-file></cid></admin>");
        repository_.DeleteBackup(dir + own);
        EXPECT_FALSE(std::filesystem::exists(dir_.path("r/" + (dir + own))));
        EXPECT_TRUE(std::filesystem::exists(dir_.path("r/" + (named + file)))) << dir << path;
    }
    std::filesystem::remove_all(dir_.path("r"));
    const std::string other =
        "<admin><cid path='d/./'><content-file>p_a_x_1203011530.tgz</content-file></cid></admin>";
    // One that is signed is read, and one that cannot be read may name all that has its prefix.
    for (const std::string& document :
         {"<Envelope>\n" + other + "\n</Envelope>", std::string("<Envelope>bad</Envelope>")}) {
        make("n/p_a_info_1203011530.xml n/p_a_x_1203011530.tgz n/d/p_a_x_1203011530.tgz");
        dir_.write("r/n/p_info_1203011530.xml", document);
        repository_.DeleteBackup("n/p_a_info_1203011530.xml");
        EXPECT_EQ(document.find("bad") != std::string::npos,
                  std::filesystem::exists(dir_.path("r/n/p_a_x_1203011530.tgz")));
        EXPECT_TRUE(std::filesystem::exists(dir_.path("r/n/d/p_a_x_1203011530.tgz")));
    }
}

TEST_F(Rotation, DeletesPackedBackupsWithTheirParts) {
    make("a.tgz a.tgz1 a.tgz10 a.tgzx b.tgz1 a.tgz2/x");
    EXPECT_EQ("unable to delete packed dump: file a.tgz1 is part of another archive",
              messageOf([&] { repository_.DeletePackedBackup("a.tgz1"); }));
    dir_.write("r/p_info_1203011530.xml",
               "<a><cid path=''><content-file>p_x_1203011530.tgz1</content-file></cid></a>");
    make("p_x_1203011530.tgz p_x_1203011530.tgz1");
    EXPECT_NE("", messageOf([&] { repository_.DeletePackedBackup("p_x_1203011530.tgz"); }));
    repository_.DeletePackedBackup("a.tgz");
    EXPECT_TRUE(log_.lines.end()[-2].ends_with("File 'a.tgz' deleted"));
    EXPECT_EQ(sorted("a.tgz2/x a.tgzx b.tgz1 p_info_1203011530.xml p_x_1203011530.tgz "
                     "p_x_1203011530.tgz1"),
              files());
    EXPECT_EQ("path to deleting file is empty",
              messageOf([&] { repository_.DeletePackedBackup(""); }));
    EXPECT_EQ("file b.tgz not exists", messageOf([&] { repository_.DeletePackedBackup("b.tgz"); }));
    EXPECT_EQ("unable to delete packed dump: file 'a.tgz2' does not exists",
              messageOf([&] { repository_.DeletePackedBackup("a.tgz2"); }));
}

}  // namespace
}  // namespace zelvo
