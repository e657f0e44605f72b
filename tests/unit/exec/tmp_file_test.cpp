#include "exec/tmp_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

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
