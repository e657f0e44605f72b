#include "content/regular_unpacker.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

#include "unpacking.h"

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RegularUnpackerTest : public Unpacking {
  protected:
    RegularUnpackerTest() {
        std::filesystem::create_directories(to);
        EXPECT_EQ(0, chown(to.c_str(), 7, 8) | chmod(to.c_str(), 02751));
        dir.write("session/victim", "safe");
    }
    // The destination itself must have stayed what it was.
    ~RegularUnpackerTest() override { EXPECT_EQ(attributesOf(to), "42751 7:8"); }

    Paths untar(const Paths& includes = {}) {
        return unpacker.untar(cid, to, includes, "webmaster", "qrdcln", 0);
    }

    void emptyDestination() const {
        for (const auto& entry : std::filesystem::directory_iterator(to)) {
            std::filesystem::remove_all(entry);
        }
    }

    zelvo::RegularUnpacker unpacker;
    const std::string to = dir.path("session/out/to");
};

void make(const std::string& path, mode_t mode, uid_t uid, gid_t gid) {
    if (path.back() == '/') {
        std::filesystem::create_directory(path);
    } else {
        std::ofstream(path) << path;
    }
    EXPECT_EQ(0, chown(path.c_str(), uid, gid) | chmod(path.c_str(), mode));
}

}  // namespace

// Catches owners and modes that are the unpacking user's or pass the mask, and a destination that
// becomes what the archive's own top directory was. Archives are the system's tar's own.
TEST_F(RegularUnpackerTest, RestoresEveryOwnerAndMode) {
    const std::string from = dir.path("from");
    make(from + "/", 0700, 9, 9);
    make(from + "/docs/", 03777, 4711, 60001);
    make(from + "/docs/with blank", 0604, 60002, 4718);
    make(from + "/docs/line\nfeed\\", 04755, 4717, 0);
    make(from + "/-C", 0, 1, 2);
    std::filesystem::create_symlink("docs/none", from + "/link");
    EXPECT_EQ(0, lchown((from + "/link").c_str(), 5, 6));
    std::filesystem::create_directory(dir.path("session/archives"));
    for (const char* options : {"-cf", "-czf"}) {
        for (const std::string& what : {std::string("."), from}) {
            std::filesystem::remove_all(to + from);
            const std::string archive = dir.path("session/archives/a.tar");
            ASSERT_EQ(0, std::system(("tar -P " + std::string(options) + " " + archive + " -C " +
                                      from + " " + what)
                                         .c_str()));
            const Paths paths = untar({"docs/none"});
            EXPECT_EQ(treeOf(to + (what == "." ? "" : from)), treeOf(from));
            ASSERT_EQ(paths.size(), 1U);
            EXPECT_TRUE(paths[0].starts_with(to + "/" + (what == "." ? "" : from.substr(1))))
                << paths[0];
            emptyDestination();
        }
    }
}

// Catches a path that a caller cannot open.
TEST_F(RegularUnpackerTest, GivesThePathOfASingleFile) {
    for (const char* name : {"a", "./a b", "/abs/a", ".hidden", "d/-x"}) {
        writeArchive(tarOf({{name}}));
        const Paths paths = untar();
        ASSERT_EQ(paths.size(), 1U);
        const bool isHidden = *name == '.' && name[1] != '/';
        // The leading dot of a name goes with that of "./".
        EXPECT_EQ(attributesOf(paths[0]), isHidden ? "-" : "100640 1001:1002") << paths[0];
    }
    // What is no plain name is listed as tar quotes it.
    writeArchive(tarOf({{"x\ny"}}));
    EXPECT_THAT(untar(), ElementsAre(to + "/x\\ny"));
    EXPECT_EQ(attributesOf(to + "/x\ny"), "100640 1001:1002");
    writeArchive(tarOf({}));
    EXPECT_THROW(untar(), std::out_of_range);
}

// What tar makes of archives that want to write elsewhere: a member whose name climbs is left out,
// an absolute one goes below the destination, a link stays an empty file until all members are
// there, so nothing goes through it.
TEST_F(RegularUnpackerTest, KeepsHostileArchivesInTheirDestination) {
    const std::string victim = dir.path("session/victim");
    const std::string outside = dir.path("session");
    const struct {
        const char* what;
        std::vector<Member> members;
        std::optional<Paths> names;  // nothing: whatever they are
        std::string left;
    } rows[] = {
        {"a name that climbs", {{"../../evil"}}, Paths(), ""},
        {"a name that climbs later", {{"d/", '5'}, {"d/../../evil"}}, Paths(), "d "},
        {"a climb to the victim", {{"./../../victim"}}, Paths(), ""},
        {"an absolute name", {{"/evil"}}, Paths{"evil"}, "evil "},
        {"a file through a link", {{"l", '2', outside}, {"l/evil"}}, Paths(), "l "},
        {"a file through a climbing link", {{"l", '2', "../.."}, {"l/evil"}}, Paths(), "l "},
        {"a file over a link", {{"l", '2', victim}, {"l", '0', "", "x"}}, Paths{"l\nl"}, "l "},
        // tar takes the directory for the file that held the place of the link, and complains,
        // where the file system gave it the same number.
        {"a directory over a link",
         {{"l", '2', outside}, {"l/", '5'}, {"l/evil"}},
         std::nullopt,
         "l l/evil "},
        {"a link over the top", {{".", '2', outside}, {"evil"}}, Paths(), "evil "},
        {"a hard link to outside", {{"h", '1', victim}}, Paths(), ""},
        {"a climbing hard link", {{"h", '1', "../../victim"}}, Paths(), ""},
        {"a file over a hard link through a link",
         {{"l", '2', outside}, {"h", '1', "l/victim"}, {"h", '0', "", "evil"}},
         Paths(),
         "h l "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        writeArchive(tarOf(row.members));
        const Paths unpacked = untar();
        Paths names = row.names.value_or(unpacked);
        if (row.names) {
            for (std::string& name : names) name.insert(0, to + "/");
        }
        EXPECT_EQ(unpacked, names);
        std::string left;
        for (const auto& line : treeOf(to)) left += line.substr(0, line.find(' ') + 1);
        EXPECT_EQ(left, row.left);
        EXPECT_EQ(contentOf(victim), "safe");
        EXPECT_EQ(attributesOf(victim), "100644 0:0");
        EXPECT_FALSE(std::filesystem::exists(outside + "/evil"));
        EXPECT_FALSE(std::filesystem::exists(outside + "/out/evil"));
        emptyDestination();
    }
    EXPECT_FALSE(std::filesystem::exists("/evil"));
}

// Catches a fence that a link left by a customer leads out of: to a directory, or to the machine as
// a process outside sees it, be it one with as many rights as tar or with fewer.
TEST_F(RegularUnpackerTest, StaysBehindItsFenceWhereverLinksLead) {
    const pid_t weak = fork();
    if (weak == 0) {
        for (unsigned long right = 0; prctl(PR_CAPBSET_DROP, right, 0, 0, 0) == 0; ++right) {
        }
        execlp("sleep", "sleep", "60", nullptr);
        _exit(1);
    }
    writeArchive(tarOf({{"l/evil"}, {"l/session/", '5'}}));
    const std::string outside = dir.path("");
    const std::string before = attributesOf(dir.path("session"));
    for (const std::string& root : {std::string(), "/proc/" + std::to_string(getpid()) + "/root",
                                    "/proc/" + std::to_string(weak) + "/root"}) {
        SCOPED_TRACE(root);
        std::filesystem::create_symlink(root + outside, to + "/l");
        untar();
        EXPECT_FALSE(std::filesystem::exists(outside + "/evil"));
        EXPECT_EQ(attributesOf(dir.path("session")), before);
        std::filesystem::remove(to + "/l");
    }
    kill(weak, SIGKILL);
    waitpid(weak, nullptr, 0);
}

// Catches a failure that leaves the unpacker, or that is told by less than an empty list.
TEST_F(RegularUnpackerTest, EndsFailuresInside) {
    writeArchive(tarOf({{"whole"}, {"cut", '0', "", std::string(9000, 'x')}}).substr(0, 4096));
    EXPECT_THAT(untar(), IsEmpty());
    EXPECT_EQ(log.lines.back(), "Can untar");
    EXPECT_THAT(log.lines,
                testing::Contains("regularUnpacker:unpack 'archives[]: a.tar,' to '" + to + "'"));
    EXPECT_THAT(log.lines[log.lines.size() - 2],
                testing::StartsWith("failure ExecCmd::Failed: Execution of tar -xvf " +
                                    dir.path("session/archives/a.tar") + " -C " + to +
                                    " failed with return code 2.\n"));
    unpacker.extractPart(cid, to + "/copy");
    EXPECT_EQ(contentOf(to + "/copy").size(), 4096U);
    cid.files = {"missing.tar"};
    unpacker.extractPart(cid, to + "/copy");
    EXPECT_EQ(log.lines.back(), "Cannot copy");
    EXPECT_EQ(contentOf(to + "/copy"), "");
    cid.files.clear();
    EXPECT_THAT(untar(), IsEmpty());
}
