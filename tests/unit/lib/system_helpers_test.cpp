#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <functional>

#include "lib/admin_password.h"
#include "lib/libcommon.h"
#include "lib/sed.h"
#include "lib/zelvo_ugid.h"
#include "temp_dir.h"

namespace {

namespace fs = std::filesystem;

// The rewriting must fail with this message.
void sedFails(const std::string& text, const char* expression, const std::string& file) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(-1, run_sed_cmd(expression, file.c_str()));
    EXPECT_EQ(0U, testing::internal::GetCapturedStdout().find(text));
}

TEST(Sed, RewritesAFileAndKeepsOwnerAndMode) {
    const TempDir dir;
    const std::string file = dir.write("f", "see /home/old/httpdocs/x (a+)\n");
    const uid_t owner = geteuid() == 0 ? 2 : geteuid();
    EXPECT_EQ(0, chmod(file.c_str(), 0640) | chown(file.c_str(), owner, getegid()));
    EXPECT_EQ(0, run_sed_cmd("s|/.*/httpdocs/|/new/|g;s/(a+)/aa/", file.c_str()));
    EXPECT_EQ(0, run_extended_sed_cmd("s/(a+)/[\\1]/", file.c_str()));
    EXPECT_EQ("see /new/x [aa]\n", contentOf(file));
    struct stat status = {};
    stat(file.c_str(), &status);
    EXPECT_EQ(S_IFREG | 0640U, status.st_mode);
    EXPECT_EQ(owner, status.st_uid);
}

TEST(Sed, TreatsLinksWithCareAndLeavesTheFileWhenItFails) {
    const TempDir dir;
    const std::string link = dir.path("link");
    const std::string file = dir.write("f", "old\n");
    fs::permissions(file, fs::perms(0600));
    fs::create_symlink(file, link);
    const mode_t mask = umask(022);
    EXPECT_EQ(0, run_sed_cmd("s/old/new/", link.c_str()));
    umask(mask);
    EXPECT_EQ(fs::file_type::regular, fs::symlink_status(link).type());
    EXPECT_EQ(fs::perms(0644), fs::symlink_status(link).permissions());

    sedFails("Error during sed working\n", "s/broken", file);
    // Sed has none of our descriptors and ignored signals, or it would live on.
    signal(SIGPIPE, SIG_IGN);
    dup2(STDERR_FILENO, 99);
    sedFails("Error dur", "1e test -e /proc/$PPID/fd/99 || kill -PIPE $PPID", file);
    close(99);
    signal(SIGPIPE, SIG_DFL);
    EXPECT_FALSE(fs::exists(file + ".tmp"));
    sedFails("ERROR: Unable to save file '/no/file' attributes : No such file", "", "/no/file");
    fs::create_directory(file + ".tmp");
    sedFails("ERROR: Unable to truncate or create file " + file + ".tmp: ", "s/old/bad/", file);
    EXPECT_EQ("old\n", contentOf(file));
    // What root writes goes into no pipe and to no other file.
    for (const auto& waiting : std::initializer_list<std::function<void(const char*)>>{
             [](const char* name) { mkfifo(name, 0600); },
             [&link](const char* name) { fs::create_symlink(link, name); },
             [&link](const char* name) { fs::create_hard_link(link, name); }}) {
        fs::remove(file + ".tmp");
        waiting((file + ".tmp").c_str());
        EXPECT_EQ(0, run_sed_cmd("s/$/!/", file.c_str()));
    }
    EXPECT_EQ("old!!!\n", contentOf(file));
    EXPECT_EQ("new\n", contentOf(link));
}

TEST(Libcommon, JudgesSubdirectoriesByTheirRealPaths) {
    const TempDir dir;
    fs::create_directories(dir.path("a/b"));
    fs::create_directories(dir.path("ab"));
    fs::create_symlink("a/b", dir.path("link"));
    const auto isInA = [&](const char* child) {
        return issubdir(dir.path("a").c_str(), dir.path(child).c_str());
    };
    EXPECT_TRUE(isInA("a") && isInA("a/b") && isInA("link"));
    EXPECT_FALSE(isInA(".") || isInA("ab") || isInA("a/none") || isInA("a/../ab"));
    EXPECT_TRUE(issubdir("/", dir.path("a").c_str()));
}

TEST(AdminPassword, IsTheFirstLineAsFarAsItFits) {
    const TempDir dir;
    const std::string rows[][2] = {{"secret", "secret"},
                                   {" s e \nsecond\n", " s e "},
                                   {"", ""},
                                   {std::string(5000, 'p') + "\n", std::string(4095, 'p')}};
    for (const auto& [content, password] : rows) {
        EXPECT_EQ(password, read_admin_password(dir.write("shadow", content).c_str()));
    }
}

TEST(Ugid, FindsUsersAndGroups) {
    uid_t uid = 77;
    gid_t gid = 77;
    EXPECT_EQ(-1, zelvo_ugid("no-one", &uid, &gid));
    EXPECT_EQ(ENOENT, errno);
    EXPECT_EQ(0, zelvo_ugid("sync", &uid, &gid));
    EXPECT_EQ(uid, get_user_id("sync"));
    EXPECT_EQ(gid, zelvo_getpw("sync")->pw_gid);
    EXPECT_NE(uid, gid);
    EXPECT_EQ(gid, get_group_id(std::to_string(gid).c_str()));
    EXPECT_EQ(0U, get_group_id("root"));
    EXPECT_STREQ("4000000000", get_user_name(4000000000U));
}

TEST(Helpers, EndTheProcessWhereNothingCanGoOn) {
    const auto ended = testing::ExitedWithCode(1);
    EXPECT_EXIT(read_admin_password("/no/file"), ended, "^Unable to open admin password file\n");
    EXPECT_EXIT(read_admin_password("/"), ended, "^Unable to read admin password file\n");
    EXPECT_EXIT(get_user_id("no-one"), ended, "^Unable to find uid for user no-one: No such");
    EXPECT_EXIT(zelvo_getpw("no-one"), ended, "^Unable to getpwnam for user no-one\n");
    EXPECT_EXIT(get_group_id("1x"), ended, "^getgrnam\\(1x\\): No such file");
    EXPECT_EXIT(get_group_id("3999999999"), ended, "^getgrgid\\(-294967297\\): No such file");
}

}  // namespace
