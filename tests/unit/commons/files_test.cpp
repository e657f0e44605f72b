#include "commons/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "../lib/temp_dir.h"
#include "commons/errors.h"
#include "commons/temp_names.h"
#include "lib/read_configuration.h"

namespace {

namespace files = zelvo::files;

// Puts a configuration in memory, so that no test depends on a panel.
class Configured : public testing::Test {
  protected:
    void SetUp() override {
        theQrdConfHash = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
        set("PRODUCT_ROOT_D", "/opt/q");
        set("HTTPD_VHOSTS_D", "/v");
        set("MAILMAN_ROOT_D", "/mm");
    }
    void TearDown() override {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
    }
    static void set(const char* key, const std::string& value) {
        ASSERT_EQ(0, conf_set_r(key, value.c_str(), theQrdConfHash));
        conf_finalize_r(theQrdConfHash);
    }
};

TEST_F(Configured, PathsHangOnTheirRoots) {
    EXPECT_EQ("/opt/q/RMK", files::getRmkDir());
    EXPECT_EQ("/opt/q/RMK/agents", files::agents::getDir());
    EXPECT_EQ("/opt/q/RMK/tmp", files::getTmpDir());
    EXPECT_EQ("/opt/q/RMK/agents/ZelvoX/control/fix_sapp_pool.xsl",
              files::getZelvoSappPoolFixedXsl());
    EXPECT_EQ("/opt/q/RMK/correct_aw_statistics.pl", files::getCorrectAwStatisticsFileName());
    EXPECT_EQ("/opt/q/RMK/restore-specification.xsd",
              files::getZelvoRestoreSpecificationXsdFileName());
    EXPECT_EQ(std::vector<std::string>{"/opt/q/bin/xt-engine-zelvorun"}, files::getPhpExecuteCmd());
    EXPECT_EQ("/opt/q/admin/vlib/backup/suspend_handler/SuspendHandlerRunner.php",
              files::getSuspendHandlerUtility());
    EXPECT_EQ("/opt/q/admin/vlib/api-cli/domain.php", files::getDirectCliUtilityPath("domain"));
    EXPECT_EQ("/opt/q/admin/vlib/backup/x.php", files::getDirectCliBackupUtilityPath("x"));
    EXPECT_EQ("/opt/q/admin/sbin/cid_unpacker", files::getCidExtractorFileName());
    EXPECT_EQ("/mm/bin/arch", files::getMailmanArchFileName());
    EXPECT_EQ("/var/lib/mailman", files::getMailmanVarDir());
    EXPECT_EQ("/var/qmail/mailnames", files::getMailDir());
}

TEST_F(Configured, DirectoriesOfDomainsHaveAsciiNames) {
    EXPECT_EQ("/v/xn--bcher-kva.example", files::getVhostDir("b\xC3\xBC"
                                                             "cher.example"));
}

TEST_F(Configured, TemporaryFilesAreNewAndPrivate) {
    const TempDir dir;
    const std::string name = zelvo::RMK_getTempFileName(dir.path(), "pre-");
    EXPECT_EQ(0U, name.find(dir.path("pre-")));
    EXPECT_EQ(dir.path("pre-XXXXXX").size(), name.size());
    struct stat status = {};
    ASSERT_EQ(0, stat(name.c_str(), &status));
    EXPECT_EQ(S_IFREG | 0600U, status.st_mode);
    EXPECT_EQ(0, status.st_size);
    EXPECT_EQ(0U, zelvo::RMK_getTempFileName(dir.path("") /* ends in a slash */, "pre-")
                      .find(dir.path("pre-")));

    const std::string made = zelvo::RMK_makeTempFileDirectory(dir.path(), std::string(200, 'p'));
    ASSERT_EQ(0, stat(made.c_str(), &status));
    EXPECT_EQ(S_IFDIR | 0700U, status.st_mode);
}

TEST_F(Configured, TemporaryFilesGoWhereTheConfigurationSays) {
    const TempDir dir;
    set("DUMP_TMP_D", dir.path());
    EXPECT_EQ(0U, zelvo::RMK_getTempFileName("", "x").find(dir.path("x")));
}

TEST_F(Configured, TemporaryFilesGoToTheMigrationToolsOtherwise) {
    const TempDir dir;
    set("PRODUCT_ROOT_D", dir.path());
    std::filesystem::create_directories(dir.path("RMK/tmp"));
    EXPECT_EQ(0U, zelvo::RMK_getTempFileName("", "x").find(dir.path("RMK/tmp/x")));
}

TEST_F(Configured, FailuresNameTheTemplate) {
    try {
        zelvo::RMK_getTempFileName("/no/such", "x");
        ADD_FAILURE();
    } catch (const zelvo::Exc<&zelvo::CantCreateTempFile>& failure) {
        EXPECT_STREQ(
            "Can not create temporary file with the template '/no/such/xXXXXXX': No such file or "
            "directory.",
            failure.what());
    }
    try {
        zelvo::RMK_makeTempFileDirectory("/no/such/", "x");
        ADD_FAILURE();
    } catch (const zelvo::Exc<&zelvo::CantCreateTempDir>& failure) {
        EXPECT_STREQ(
            "Can not create temporary dir with the template '/no/such/xXXXXXX': No such file or "
            "directory.",
            failure.what());
    }
}

}  // namespace
