#include "exec/tmp_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "commons/system_error.h"

using namespace zelvo;

namespace {

std::string contentOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

}  // namespace

TEST(TmpFile, IsGoneOnlyWithAutoclean) {
    for (const bool autoclean : {true, false}) {
        auto file = std::make_unique<RMKTmpFile>(testing::TempDir(), "rmk-", autoclean);
        const std::string path = file->path();
        *file << "some " << 42 << std::flush;
        EXPECT_EQ(contentOf(path), "some 42");
        *file << " more";
        struct stat info {};
        ASSERT_EQ(stat(path.c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777, 0600U);
        file.reset();
        EXPECT_EQ(access(path.c_str(), F_OK) == 0, !autoclean);
        if (!autoclean) {
            EXPECT_EQ(contentOf(path), "some 42 more");
            unlink(path.c_str());
        }
    }
}

TEST(TmpFile, StandsInItsDirectoryWithOneSlash) {
    std::string dir = testing::TempDir();
    dir.erase(dir.find_last_not_of('/') + 1);
    for (const std::string& form : {dir, dir + "/"}) {
        const RMKTmpFile file(form, "cert.tmp", true);
        EXPECT_EQ(file.path().substr(0, file.path().size() - 6), dir + "/cert.tmp");
    }
}

TEST(TmpFile, TellsWhatFails) {
    try {
        const TmpFile file("/nonexistent/prefix", true);
        ADD_FAILURE() << "nothing was raised";
    } catch (const SystemError& failure) {
        EXPECT_STREQ(failure.what(), "mkstemp() failed: : No such file or directory");
    }
    testing::internal::CaptureStderr();
    {
        const RMKTmpFile file(testing::TempDir(), "rmk-", true);
        unlink(file.path().c_str());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "TmpFile autoclean failed: No such file or directory\n");
}
