#include "lib/sed.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "lib/fork_exec.h"
#include "temp_dir.h"

namespace {

struct stat statusOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(0, lstat(path.c_str(), &status));
    return status;
}

// The result of the failing call, whose messages must contain the text.
template <class Call>
int failing(const std::string& text, Call call) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const int result = call();
    EXPECT_NE(std::string::npos, testing::internal::GetCapturedStdout().find(text));
    testing::internal::GetCapturedStderr();
    return result;
}

TEST(Sed, RewritesAFileAndKeepsOwnerAndMode) {
    const TempDir dir;
    const std::string file = dir.write("f", "see /home/old/httpdocs/x\n");
    ASSERT_EQ(0, chmod(file.c_str(), 0640));
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(0, isRoot ? chown(file.c_str(), 2, 3) : 0);
    EXPECT_EQ(0, run_sed_cmd("s|/.*/httpdocs/|/new/|g", file.c_str()));
    EXPECT_EQ("see /new/x\n", contentOf(file));
    EXPECT_EQ(0640U, statusOf(file).st_mode & 07777);
    EXPECT_EQ(isRoot ? 2 : geteuid(), statusOf(file).st_uid);
    EXPECT_FALSE(std::filesystem::exists(file + ".tmp"));
}

TEST(Sed, TellsBasicFromExtendedExpressions) {
    const TempDir dir;
    const std::string file = dir.write("f", "aaa (a+)\n");
    EXPECT_EQ(0, run_sed_cmd("s/(a+)/B/", file.c_str()));
    EXPECT_EQ("aaa B\n", contentOf(file));
    EXPECT_EQ(0, run_extended_sed_cmd("s/(a+)/[\\1]/", file.c_str()));
    EXPECT_EQ("[aaa] B\n", contentOf(file));
}

TEST(Sed, ReplacesALinkWithoutItsOwnerAndMode) {
    const TempDir dir;
    const std::string file = dir.write("f", "a\n");
    ASSERT_EQ(0, chmod(file.c_str(), 0600));
    std::filesystem::create_symlink(file, dir.path("link"));
    const mode_t mask = umask(022);
    EXPECT_EQ(0, run_sed_cmd("s/a/b/", dir.path("link").c_str()));
    umask(mask);
    EXPECT_EQ("a\n", contentOf(file));
    EXPECT_EQ("b\n", contentOf(dir.path("link")));
    EXPECT_EQ(S_IFREG | 0644U, statusOf(dir.path("link")).st_mode);
}

TEST(Sed, LeavesTheFileWhenItFails) {
    const TempDir dir;
    const std::string file = dir.write("f", "a\n");
    EXPECT_EQ(-1, failing("Error during sed working\n",
                          [&] { return run_sed_cmd("s/broken", file.c_str()); }));
    EXPECT_EQ("a\n", contentOf(file));
    EXPECT_FALSE(std::filesystem::exists(file + ".tmp"));
    EXPECT_EQ(-1, failing("ERROR: Unable to save file '" + file + "x' attributes : No such file",
                          [&] { return run_sed_cmd("", (file + "x").c_str()); }));
}

TEST(Sed, IsNotLedAwayByALinkUnderTheTemporaryName) {
    const TempDir dir;
    const std::string file = dir.write("f", "a\n");
    const std::string victim = dir.write("victim", "precious\n");
    std::filesystem::create_symlink(victim, file + ".tmp");
    EXPECT_EQ(-1, failing("ERROR: Unable to truncate or create file " + file + ".tmp: ",
                          [&] { return run_sed_cmd("s/a/b/", file.c_str()); }));
    EXPECT_EQ("precious\n", contentOf(victim));
    EXPECT_EQ("a\n", contentOf(file));
}

int runShell(const char* script) {
    char* const argv[] = {const_cast<char*>("sh"), const_cast<char*>("-c"),
                          const_cast<char*>(script), nullptr};
    return fork_execv_fd("/bin/sh", argv, STDIN_FILENO, STDOUT_FILENO);
}

TEST(ForkExecvFd, TellsHowTheChildEnded) {
    EXPECT_EQ(3, runShell("exit 3"));
    EXPECT_EQ(-1, runShell("kill -9 $$"));
    char* const argv[] = {nullptr};
    EXPECT_EQ(-1, fork_execv_fd("/no/such/program", argv, STDIN_FILENO, STDOUT_FILENO));
    EXPECT_EQ(ENOENT, errno);
}

TEST(ForkExecvFd, StartsTheChildWithoutOurDescriptorsAndSignals) {
    const int extra = dup(STDERR_FILENO);
    const auto before = signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(0, runShell("test ! -e /proc/self/fd/3"));
    // An ignored signal would not end the child.
    EXPECT_EQ(-1, runShell("kill -PIPE $$"));
    signal(SIGPIPE, before);
    close(extra);
}

}  // namespace
