#include "exec/tmp_file.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "commons/system_error.h"

using namespace zelvo;

TEST(TmpFile, IsItsOwnersAndGoneOnlyWithAutoclean) {
    std::string dir = testing::TempDir();
    dir.erase(dir.find_last_not_of('/') + 1);
    for (const bool autoclean : {true, false}) {
        std::string path;
        std::string content;
        {
            RMKTmpFile file(autoclean ? dir : dir + "/", "rmk-", autoclean);
            path = file.path();
            file << "some " << 42 << std::flush;
            std::getline(std::ifstream(path), content);
            EXPECT_EQ(content, "some 42");
            EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
            file << " more";
        }
        EXPECT_EQ(path.substr(0, path.size() - 6), dir + "/rmk-") << "one slash";
        content.clear();
        std::getline(std::ifstream(path), content);
        EXPECT_EQ(content, autoclean ? "" : "some 42 more");
        EXPECT_EQ(unlink(path.c_str()), autoclean ? -1 : 0);
    }
}

TEST(TmpFile, TellsWhatFails) {
    EXPECT_THAT(
        [] { TmpFile("/nonexistent/prefix", true); },
        testing::ThrowsMessage<SystemError>("mkstemp() failed: : No such file or directory"));
    testing::internal::CaptureStderr();
    unlink(RMKTmpFile(testing::TempDir(), "rmk-", true).path().c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "TmpFile autoclean failed: No such file or directory\n");
}
