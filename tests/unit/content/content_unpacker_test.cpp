#include "content/content_unpacker.h"

#include "content/content_errors.h"
#include "content/destination.h"
#include "content/null_separated.h"
#include "exec/destination_directory.h"
#include "unpacking.h"

using namespace test;
using testing::ElementsAre;

namespace {

class ContentUnpackerTest : public Unpacking {
  protected:
    FakeUnpacker unpacker;
};

}  // namespace

TEST_F(ContentUnpackerTest, GivesFullPathsWhateverTheArchiveStartsItsNamesWith) {
    unpacker.names = {"./a", "/b", "c", "..d", ".e", ".", ".//f", "//g"};
    const std::string to = dir.path("to");
    EXPECT_THAT(unpacker.untar(cid, to, {"x", "x", "y", "x"}, "webmaster", "qrdcln", 0),
                ElementsAre(to + "/a", to + "/b", to + "/c", to + "/.d", to + "/e", to + "/",
                            to + "//f", to + "//g"));
    EXPECT_THAT(unpacker.includes, ElementsAre("x", "y", "x"));
    EXPECT_THAT(log.lines,
                ElementsAre("Unpack file to '" + to + "' User: 'webmaster', group 'qrdcln'"));
    unpacker.names = {""};
    EXPECT_THROW(unpacker.untar(cid, to, "root", "0", 0), std::out_of_range);
    for (const char* name : {"a/../../b", ".../..", "/../b"}) {
        unpacker.names = {name};
        EXPECT_THROW(unpacker.untar(cid, to, "root", "0", 0), zelvo::Exc<&zelvo::UnExpectedResult>);
    }
}

TEST_F(ContentUnpackerTest, UnpacksAPartAboveItsOffset) {
    struct {
        const char* to;
        const char* offset;
        const char* above;
    } const rows[] = {{"v/httpdocs", "httpdocs", "v/"},
                      {"v/httpdocs/sub", "httpdocs", "v/httpdocs/sub"},
                      {"v/docs/docs", "docs", "v/docs/"},
                      {"v/httpdocs/", "docs/", "v/httpdocs/"},
                      {"v", "", "v"}};
    for (const auto& row : rows) {
        unpacker.untar(cid, dir.path(row.to), row.offset, "root", "root", 0);
        EXPECT_EQ(unpacker.destination, dir.path(row.above));
        EXPECT_EQ(unpacker.includes, *row.offset == '\0' ? Paths() : Paths{row.offset});
    }
    EXPECT_THAT(log.lines, testing::Contains("Change destination path to '" + dir.path("v/") +
                                             "' using offset 'httpdocs'"));
}

TEST_F(ContentUnpackerTest, KeepsWhatTheDestinationWas) {
    const std::string to = dir.path("to");
    std::filesystem::create_directory(to);
    EXPECT_EQ(0, chown(to.c_str(), 7, 8) | chmod(to.c_str(), 02751));
    unpacker.work = [](const std::string& path) {
        EXPECT_EQ(0, chown(path.c_str(), 1, 2) | chmod(path.c_str(), 0700));
        throw EXC(zelvo::UnExpectedResult) % "end";
    };
    EXPECT_ANY_THROW(unpacker.untar(cid, to, "webmaster", "qrdcln", 0750));
    EXPECT_EQ(attributesOf(to), "42751 7:8");
}

TEST_F(ContentUnpackerTest, MakesOnlyTheDirectoriesThatAreMissing) {
    dir.write("file", "");
    std::filesystem::create_directory(dir.path("old"));
    zelvo::create_destdir(dir.path("old//x/../new/./deep/"), 7, 8, 01770);
    EXPECT_EQ(attributesOf(dir.path("old")), "40755 0:0");
    EXPECT_EQ(treeOf(dir.path("old")),
              (std::set<std::string>{"new 41770 7:8", "new/deep 41770 7:8"}));
    EXPECT_EQ(faultOf([&] { zelvo::create_destdir(dir.path("file/x/y"), 7, 8, 0); }),
              "CantCreateDirectory: Can not create directory " + dir.path("file") +
                  ": path component is not a directory");
    EXPECT_EQ(
        faultOf([&] { zelvo::create_destdir("/proc/none", 7, 8, 0); }),
        "CantCreateDirectory: Can not create directory /proc/none: No such file or directory");
}

// Catches an unpacking through a link that a customer or an earlier archive has left.
TEST_F(ContentUnpackerTest, GoesThroughLinksOfTheAdministratorOnly) {
    const auto linkIn = [](const std::string& parent, mode_t mode, uid_t owner) {
        std::filesystem::create_directories(parent + "/real");
        std::filesystem::create_symlink("real", parent + "/link");
        EXPECT_EQ(0, lchown((parent + "/link").c_str(), owner, 0) | chmod(parent.c_str(), mode));
        return faultOf([&] { zelvo::create_destdir(parent + "/link/new", 7, 8, 0); });
    };
    EXPECT_EQ(linkIn(dir.path("roots"), 0755, 0), "");
    EXPECT_TRUE(std::filesystem::exists(dir.path("roots/real/new")));
    const std::string refused = ": path component is a link that others than root may have made";
    EXPECT_THAT(linkIn(dir.path("others"), 0755, 7), testing::EndsWith(refused));
    EXPECT_THAT(linkIn(dir.path("shared"), 0775, 0), testing::EndsWith(refused));
    EXPECT_THAT(linkIn(rmk("tmp/of"), 0755, 0), testing::EndsWith(refused));
}

// Each kind of content that is no part of a virtual host: where it goes and what the directory that
// is made for it looks like. Ids: qrdadm 4711:4712, popuser 4713:4714, list 4715:4716, webmaster
// 4717, qrdcln 4718.
TEST_F(ContentUnpackerTest, KnowsTheOwnersOfEachKindOfContent) {
    const Paths wanted = {"off"};
    Paths result;
    bool convert = false;
    const struct {
        std::function<void(const std::string& to)> extract;
        // Below the box's directory; empty for the argument.
        const char* to;
        const char* attributes;
    } rows[] = {
        {[&](auto& to) { unpacker.extractDomainVhost(cid, to, wanted, "webmaster", result); }, "",
         "40755 4717:4718"},
        {[&](auto& to) { unpacker.extractDomainWhole(cid, to, "webmaster"); }, "",
         "40750 4717:4718"},
        {[&](auto& to) { unpacker.extractDomainMailList(cid, to, wanted); }, "", "40755 4715:4716"},
        {[&](auto&) { unpacker.extractDomainMail(cid, "a.com", wanted); }, "mail/a.com",
         "40755 4713:4714"},
        {[&](auto&) { unpacker.extractAutoResponder(cid, "bob", "away", "off"); },
         "product/RMK/tmp/bob/away", "40770 4711:4712"},
        {[&](auto&) { unpacker.extractSpamAssassinContent(cid, "a.com", "bob", convert, "off"); },
         "mail/a.com/bob/.spamassassin", "40770 4713:4714"},
        {[&](auto&) { unpacker.extractMailManContent(cid, "a.com", "news", "off"); },
         "lists/archives/private/news.mbox", "40755 4715:4716"},
        {[&](auto&) { unpacker.mdir2mdir(cid, "a.com", "bob", "off"); }, "mail/a.com/bob/Maildir",
         "40755 4713:4714"},
    };
    int number = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(++number);
        const std::string to = *row.to == '\0' ? dir.path(std::to_string(number)) : box(row.to);
        std::filesystem::remove_all(box("mail"));
        std::filesystem::remove_all(box("lists"));
        row.extract(to);
        EXPECT_EQ(unpacker.destination, to);
        EXPECT_EQ(unpacker.attributes, row.attributes);
        EXPECT_EQ(unpacker.includes, number == 2 ? Paths() : wanted);
    }
}

// Catches: what an archive holds beside the file, or in its place, left where others can reach it.
TEST_F(ContentUnpackerTest, GivesASingleFileInADirectoryOfItsOwn) {
    const struct {
        zelvo::UnpackedFile (zelvo::ContentUnpacker::*extract)(const Cid&);
        const char* list;
        const char* owner;
    } rows[] = {
        {&FakeUnpacker::extractIcons, "iconFiles", "'root', group '0'"},
        {&FakeUnpacker::extractPrivateKey, "private_keys", "'qrdadm', group 'qrdadm'"},
        {&FakeUnpacker::extractSiteAppDistr, "packageFiles", "'qrdadm', group 'qrdadm'"},
        {&FakeUnpacker::extractTomCatApp, "tomcatApplicationFiles", "'qrdadm', group 'qrdadm'"}};
    for (const auto& row : rows) {
        unpacker.names = {"./one"};
        unpacker.work = [](const std::string& directory) {
            std::ofstream(directory + "/one");
            std::filesystem::create_symlink("/etc/passwd", directory + "/link");
        };
        {
            const zelvo::UnpackedFile file = (unpacker.*row.extract)(cid);
            EXPECT_EQ(file.path(), unpacker.destination + "/one");
            EXPECT_TRUE(unpacker.destination.starts_with(rmk("tmp/")));
            EXPECT_EQ(unpacker.attributes, "40700 4711:4712");
            EXPECT_TRUE(log.lines.back().ends_with("' User: " + std::string(row.owner)));
        }
        unpacker.names = {"one", "two"};
        EXPECT_EQ(faultOf([&] { (unpacker.*row.extract)(cid); }),
                  std::string("AssertionFailed: Assertion failed: ") + row.list + ".size() == 1");
        unpacker.names = {"link"};
        EXPECT_THROW((unpacker.*row.extract)(cid), zelvo::Exc<&zelvo::UnExpectedResult>);
        EXPECT_FALSE(std::filesystem::exists(unpacker.destination));
    }
}

TEST(NullSeparated, HasOnePartMoreThanZeroBytes) {
    EXPECT_THAT(zelvo::parse_nullseparated(""), ElementsAre(""));
    EXPECT_THAT(zelvo::parse_nullseparated("a\nb"), ElementsAre("a\nb"));
    EXPECT_THAT(zelvo::parse_nullseparated(std::string("a\0\0b\0", 5)),
                ElementsAre("a", "", "b", ""));
}
