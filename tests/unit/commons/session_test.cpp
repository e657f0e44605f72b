#include "commons/session.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem/path.hpp>
#include <cstdlib>

#include "../lib/temp_dir.h"
#include "commons/errors.h"
#include "commons/input_file.h"
#include "commons/make_dir.h"

namespace {

using zelvo::SessionFiles;

constexpr const char* kNoDirectory = "Unable to create session: Unable to create session directory";

struct stat statusOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(0, stat(path.c_str(), &status)) << path;
    return status;
}

// What making the session fails with, "" if it does not.
std::string failureOf(const std::string& path) {
    try {
        SessionFiles{path};
    } catch (const zelvo::Exc<&zelvo::UnableToCreateSession>& failure) {
        return failure.what();
    }
    return "";
}

TEST(Session, NamesItsFilesBelowThePathAsGiven) {
    const TempDir dir;
    std::filesystem::create_directories(dir.path("s/archives"));
    const SessionFiles session(dir.path("s/"));
    const std::string root = dir.path("s/") + "/";
    EXPECT_EQ(root + "dump.xml", session.getDumpFileName());
    EXPECT_EQ(root + "restore.xml", session.getZelvoDumpFileName());
    EXPECT_EQ(root + "migration.log", session.getLogFileName());
    EXPECT_EQ(root + "migration.result", session.getResultFileName());
    EXPECT_EQ(root + "migration.status", session.getStatusFileName());
    EXPECT_EQ(root + "agent-deployment.status", session.getDeploymentStatusFileName());
    EXPECT_EQ(root + "scout-result.xml", session.getScoutResultFileName());
    EXPECT_EQ(root + "dumping-status.xml", session.getDumpingStatusFileName());
    EXPECT_EQ(root + "a/b.tar", session.getCidFile("a/b.tar"));
    EXPECT_EQ(dir.path("s/"), session.getDir());
    EXPECT_EQ(dir.path("s/"), session.getCidFilesDir());
}

TEST(Session, LeavesWhatExistsAsItIs) {
    const TempDir dir;
    std::filesystem::create_directories(dir.path("s/archives"));
    dir.write("s/archives/x", "kept");
    ASSERT_EQ(0, chmod(dir.path("s").c_str(), 0701));
    EXPECT_EQ("", failureOf(dir.path("s")));
    EXPECT_EQ(0701U, statusOf(dir.path("s")).st_mode & 07777);
    EXPECT_EQ("kept", contentOf(dir.path("s/archives/x")));
}

TEST(Session, FailsOnAFile) {
    const TempDir dir;
    EXPECT_EQ(kNoDirectory, failureOf(dir.write("file", "")));
}

// Gives this process a mount namespace of its own in which the panel's user exists, with one number
// for the user and another one for the user's group. Needs a process that may do so.
bool addPanelUser(const TempDir& dir) {
    const std::string users =
        dir.write("passwd", contentOf("/etc/passwd") + "qrdadm:x:4711:4712::/:/bin/false\n");
    return unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount(users.c_str(), "/etc/passwd", "none", MS_BIND, nullptr) == 0;
}

// Runs in a child: the exit status tells whether all went as expected.
[[noreturn]] void makeSessionsAsPanel(const TempDir& dir) {
    if (!addPanelUser(dir)) {
        exit(77);
    }
    umask(022);
    const bool made = failureOf(dir.path("a/b")).empty();
    const bool refused = failureOf(dir.path(std::string(300, 'x'))) == kNoDirectory;
    exit(made && refused ? 0 : 1);
}

TEST(Session, IsMadeWithItsParentsForThePanelsGroup) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    const TempDir dir;
    EXPECT_EXIT(makeSessionsAsPanel(dir), testing::ExitedWithCode(0), "");
    for (const char* const made : {"a", "a/b", "a/b/archives"}) {
        const struct stat status = statusOf(dir.path(made));
        EXPECT_EQ(S_IFDIR | 0750U, status.st_mode) << made;
        EXPECT_EQ(0U, status.st_uid) << made;
        EXPECT_EQ(4711U, status.st_gid) << made;
    }
}

TEST(Session, IsKnownWhileItsControllerLives) {
    const TempDir dir;
    std::filesystem::create_directories(dir.path("s/archives/deep"));
    EXPECT_EQ(nullptr, zelvo::theSession);
    {
        const zelvo::SessionLifetimeController controller(dir.path("s"));
        ASSERT_NE(nullptr, zelvo::theSession);
        zelvo::theSession->remove();
    }
    EXPECT_EQ(nullptr, zelvo::theSession);
    EXPECT_FALSE(std::filesystem::exists(dir.path("s")));
}

TEST(MakeDir, MakesEachLevelAlike) {
    const TempDir dir;
    const std::string deep = dir.path("x/y//z/");
    zelvo::make_dir(boost::filesystem::path(deep), geteuid(), getegid(), 0710);
    for (const char* const made : {"x", "x/y", "x/y/z"}) {
        EXPECT_EQ(S_IFDIR | 0710U, statusOf(dir.path(made)).st_mode) << made;
    }
    std::string path = dir.path("q/r");
    zelvo::make_dir(path.data(), geteuid(), getegid(), 0700);
    EXPECT_EQ(dir.path("q/r"), path);
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST(MakeDir, LeavesWhatIsInTheWay) {
    const TempDir dir;
    const std::string file = dir.write("file", "kept");
    zelvo::make_dir(file, geteuid(), getegid(), 0700);
    zelvo::make_dir(file + "/below", geteuid(), getegid(), 0700);
    EXPECT_EQ("kept", contentOf(file));
}

TEST(CheckInputFile, AcceptsRegularFilesOnly) {
    const TempDir dir;
    const std::string file = dir.write("file", "");
    std::filesystem::create_symlink(file, dir.path("link"));
    EXPECT_TRUE(zelvo::check_input_file(file, false));
    EXPECT_TRUE(zelvo::check_input_file(dir.path("link"), true));
    EXPECT_FALSE(zelvo::check_input_file(dir.path(), false));
    EXPECT_FALSE(zelvo::check_input_file(dir.path("none"), false));
    EXPECT_FALSE(zelvo::check_input_file("", false));
}

}  // namespace
