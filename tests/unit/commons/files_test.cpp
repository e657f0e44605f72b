#include "commons/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "commons/errors.h"
#include "commons/input_file.h"
#include "commons/temp_names.h"
#include "memory_configuration.h"
#include "temp_dir.h"
#include "told.h"

namespace {

mode_t modeOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(0, stat(path.c_str(), &status)) << path;
    return status.st_mode;
}

class Files : public testing::Test {
  protected:
    Files() { configuration_.set("PRODUCT_ROOT_D", dir_.path("q")); }

    const TempDir dir_;
    const MemoryConfiguration configuration_;
};

TEST_F(Files, HangOnTheirRoots) {
    EXPECT_EQ(dir_.path("q/admin/sbin/cid_unpacker"), zelvo::files::getCidExtractorFileName());
    EXPECT_EQ("/usr/lib/mailman/bin/arch", zelvo::files::getMailmanArchFileName());
    EXPECT_EQ("/var/www/vhosts/xn--tda.example", zelvo::files::getVhostDir("\u00FC.example"));
}

// Catches: a temporary file that others can read, or that lies where nobody cleans up.
TEST_F(Files, TemporaryOnesAreNewPrivateAndWhereTheyBelong) {
    std::filesystem::create_directories(dir_.path("q/RMK/tmp"));
    const auto make = [&](const std::string& in, const std::string& start) {
        const std::string name = zelvo::RMK_getTempFileName(in, "x");
        EXPECT_EQ(dir_.path(start), name.substr(0, name.size() - 6));
        EXPECT_EQ(S_IFREG | 0600U, modeOf(name));
    };
    make(dir_.path("q"), "q/x");
    make(dir_.path("q/"), "q/x");
    make("", "q/RMK/tmp/x");
    configuration_.set("DUMP_TMP_D", dir_.path("q"));
    make("", "q/x");
    EXPECT_EQ(S_IFDIR | 0700U, modeOf(zelvo::RMK_makeTempFileDirectory("", "y")));
    const std::string why = " with the template '/no/such/xXXXXXX': No such file or directory.";
    const std::string what = "Can not create temporary ";
    EXPECT_EQ(what + "file" + why, messageOf([] { zelvo::RMK_getTempFileName("/no/such", "x"); }));
    EXPECT_EQ(what + "dir" + why,
              messageOf([] { zelvo::RMK_makeTempFileDirectory("/no/such", "x"); }));
}

TEST_F(Files, OfInputAreRegularOnes) {
    std::filesystem::create_symlink(dir_.write("file", ""), dir_.path("link"));
    EXPECT_TRUE(zelvo::check_input_file(dir_.path("link"), true));
    EXPECT_FALSE(zelvo::check_input_file(dir_.path(""), false));
    EXPECT_FALSE(zelvo::check_input_file("", false));
}

}  // namespace
