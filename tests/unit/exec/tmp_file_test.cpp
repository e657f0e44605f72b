#include "exec/tmp_file.h"

#include <gtest/gtest.h>

#include "temp_dir.h"

using namespace zelvo;

TEST(TmpFile, IsItsOwnersAndGoneOnlyWithAutoclean) {
    const TempDir dir;
    for (const bool autoclean : {true, false}) {
        std::string path;
        {
            RMKTmpFile file(dir.path(autoclean ? "." : "./"), "rmk-", autoclean);
            path = file.path();
            file << "some " << 42 << std::flush;
            EXPECT_EQ(contentOf(path), "some 42");
            EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
            file << " more";
        }
        EXPECT_EQ(path.substr(0, path.size() - 6), dir.path("./rmk-")) << "one slash";
        EXPECT_EQ(contentOf(path), autoclean ? "" : "some 42 more");
        EXPECT_EQ(std::filesystem::exists(path), !autoclean);
    }
}
