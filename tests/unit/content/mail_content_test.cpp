#include "content/front_page.h"
#include "content/regular_unpacker.h"
#include "unpacking.h"

using namespace test;

namespace {

// Mail with stand-ins for the panel's scripts, which note who they are and what they were given.
class MailContentTest : public Unpacking {
  protected:
    static void script(const std::string& name, const std::string& more) {
        writeProgram(rmk(name),
                     "echo \"$(id -u) $*\" >> " + box("mail/calls") + "\n" + more + "\n");
    }
    MailContentTest() {
        std::filesystem::remove_all(box("mail"));
        std::filesystem::create_directories(box("mail"));
        std::filesystem::permissions(box("mail"), std::filesystem::perms(0777));
    }
    // What the scripts noted.
    static std::string calls() { return plain(contentOf(box("mail/calls"))); }

    FakeUnpacker unpacker;
};

}  // namespace

TEST_F(MailContentTest, ConvertsSpamDataUntilTheConverterSaysNo) {
    const std::string call = "4713 " + box("mail/a/bob/.spamassassin") + "\n";
    bool convert = true;
    std::string expected;
    for (const char* code : {"0", "2", "1", "0"}) {
        script("sa_convert.sh", std::string("exit ") + code);
        expected += convert ? call : "";
        unpacker.extractSpamAssassinContent(cid, "a", "bob", convert, "");
        EXPECT_EQ(calls(), expected);
        EXPECT_EQ(convert, expected.size() < 3 * call.size());
    }
}

TEST_F(MailContentTest, ConvertsMailboxesAsTheMailUser) {
    const std::string tmp = box("tmp/migration-unpack-XXXXXX");
    const std::string end = " -R -d " + box("mail/a/bob/Maildir") + "\n";
    zelvo::RegularUnpacker regular;
    writeArchive(tarOf({{"inbox", '0', "", "From x\n"}, {"sent"}}));
    // The directory must be the mail user's own.
    script("mb2md.pl", "touch \"$2\"/inbox-read && exit $(ls \"$2\" | wc -l)");
    EXPECT_THAT(faultOf([&] { regular.mbox2mdir(cid, "a", "bob", false, ""); }),
                testing::HasSubstr("failed with return code 3."));
    EXPECT_EQ(calls(), "4713 -s " + tmp + end);
    EXPECT_TRUE(isTmpEmpty());

    // An inbox goes, and the directory that it came in stays.
    script("mb2md.pl", "");
    writeArchive(tarOf({{"inbox", '0', "", "From x\n"}}));
    EXPECT_TRUE(regular.mbox2mdir(cid, "a", "bob", true, ""));
    unpacker.names = {"inbox"};
    EXPECT_ANY_THROW(unpacker.mbox2mdir(cid, "a", "bob", true, "part"));
    EXPECT_THAT(unpacker.includes, testing::ElementsAre("part"));
    EXPECT_THAT(log.lines,
                testing::Contains(testing::EndsWith("User: 'popuser', group 'popuser'")));
    EXPECT_EQ(calls(), "4713 -s " + tmp + end + "4713 -s " + tmp + "/inbox" + end);
    const auto left = treeOf(box("tmp"));
    ASSERT_EQ(left.size(), 1U);
    EXPECT_THAT(*left.begin(), testing::EndsWith(" 40700 4713:4714"));
    std::filesystem::remove_all(box("tmp"));
    std::filesystem::create_directory(box("tmp"));
}

// Catches a chown or chmod that leaves the domain's mail through a name or a link of the archive.
// The paths that are changed start with the destination twice.
TEST_F(MailContentTest, ChangesNothingOutsideTheDomainsMail) {
    const std::string inside = box("mail/a") + box("mail/a");
    const std::string victim = dir.write("victim", "");
    unpacker.work = [&](const std::string&) {
        std::filesystem::create_directories(inside + "/bob");
        std::ofstream(inside + "/bob/x");
        std::filesystem::create_symlink(victim, inside + "/bob/link");
        std::filesystem::create_symlink(dir.path(""), inside + "/bob/dir");
    };
    // Neither is told from other mail: the names that are compared start with a slash.
    for (const char* name : {"/bob/Maildir", "/bob/.spamassassin", "/top"}) {
        std::filesystem::create_directories(inside + name);
        EXPECT_EQ(0, chmod((inside + name).c_str(), 0700));
    }
    unpacker.names = {"bob/x",       "bob/link",          "bob/dir/victim",
                      "bob/Maildir", "bob/.spamassassin", "top"};
    EXPECT_THAT(faultOf([&] { unpacker.extractDomainMail(cid, "a", {}); }),
                testing::EndsWith("is neither a file nor a directory"));
    EXPECT_EQ(attributesOf(inside + "/bob/x"), "100770 4711:4712");
    EXPECT_FALSE(std::filesystem::is_symlink(inside + "/bob/link"));
    EXPECT_EQ(attributesOf(victim), "100644 0:0");
    EXPECT_EQ(attributesOf(inside + "/bob/Maildir"), "40770 4711:4712");
    EXPECT_EQ(attributesOf(inside + "/bob/.spamassassin"), "40770 4711:4712");
    EXPECT_EQ(attributesOf(inside + "/top"), "40700 0:0");
}

TEST_F(MailContentTest, RewritesTheAccessFilesOfADocumentRoot) {
    const std::string to = dir.path("new/httpdocs");
    const std::string old = "AuthFile /old/a.com/httpsdocs/x\n";
    const std::string outside = dir.path("outside");
    std::filesystem::create_directory(outside);
    const std::string secret = dir.write("outside/.htaccess", old);
    unpacker.work = [&](const std::string& above) {
        const std::string root = above + "httpdocs";
        std::filesystem::create_directories(root + "/d");
        for (const char* name : {"/d/.htaccess", "/access.cnf", "/my.htaccess"}) {
            std::ofstream(root + name) << old;
            EXPECT_EQ(0, chown((root + name).c_str(), 7, 8) | chmod((root + name).c_str(), 0604));
        }
        std::filesystem::create_directories(root + "/link");
        std::filesystem::create_symlink(secret, root + "/link/.htaccess");
        std::filesystem::create_directory_symlink(outside, root + "/out");
    };
    unpacker.names = {"httpdocs/d/.htaccess", "httpdocs/access.cnf", "httpdocs/my.htaccess",
                      "httpdocs/link/.htaccess", "httpdocs/out/.htaccess"};
    for (const auto extract :
         {&FakeUnpacker::extractDomainDocRoot, &FakeUnpacker::extractDomainDocRootSSL}) {
        std::filesystem::remove_all(to);
        (unpacker.*extract)(cid, "a.com", to, "webmaster", "httpdocs");
        EXPECT_NE(contentOf(to + "/access.cnf"), old);
    }
    const std::string mended = "AuthFile " + to + "/x\n";
    EXPECT_EQ(contentOf(to + "/d/.htaccess"), mended);
    EXPECT_EQ(contentOf(to + "/access.cnf"), mended);
    EXPECT_EQ(contentOf(to + "/my.htaccess"), old);
    EXPECT_EQ(attributesOf(to + "/d/.htaccess"), "100604 7:8");
    EXPECT_TRUE(std::filesystem::is_symlink(to + "/link/.htaccess"));
    EXPECT_EQ(contentOf(secret), old);

    // A name from a dump must not become a command of sed.
    zelvo::apply_hosting_cid_with_fp("x|y|;w " + dir.path("written") + "\n;s|", to,
                                     to + "/d/.htaccess");
    EXPECT_FALSE(std::filesystem::exists(dir.path("written")));
    EXPECT_EQ(contentOf(to + "/d/.htaccess"), mended);
}
