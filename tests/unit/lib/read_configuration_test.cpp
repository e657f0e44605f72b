#include "lib/read_configuration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "log_capture.h"
#include "temp_dir.h"

namespace {

using Conf = std::unique_ptr<conf_data, decltype(&conf_free_r)>;

Conf emptyConf() { return {static_cast<conf_data*>(calloc(1, sizeof(conf_data))), &conf_free_r}; }

Conf parsed(const std::string& content) {
    const TempDir dir;
    Conf conf = emptyConf();
    EXPECT_EQ(0, conf_read_file_r(dir.write("conf", content).c_str(), conf.get()));
    return conf;
}

struct ValueCase {
    const char* line;
    const char* value;
};

class ConfValue : public testing::TestWithParam<ValueCase> {};

TEST_P(ConfValue, EndsWhereFilesInUseExpectIt) {
    const LogCapture log;
    EXPECT_STREQ(GetParam().value, conf_get_r("KEY_1", parsed(GetParam().line).get()));
    EXPECT_EQ("", log.text());
}

INSTANTIATE_TEST_SUITE_P(Lines, ConfValue,
                         testing::Values(ValueCase{"KEY_1 /var/www\n", "/var/www"},
                                         ValueCase{"KEY_1 /var/www", "/var/www"},
                                         ValueCase{"KEY_1 /var/www # why\n", "/var/www"},
                                         ValueCase{"KEY_1 /var/www#why\n", "/var/www"},
                                         ValueCase{"KEY_1 /var/www  # why\n", "/var/www  "},
                                         ValueCase{"KEY_1 /var/www   # why\n", "/var/www  "},
                                         ValueCase{"KEY_1 /var/www \n", "/var/www \n"},
                                         ValueCase{"KEY_1 /var/www\r\n", "/var/www\r\n"},
                                         ValueCase{"KEY_1 /var/www \t\n", "/var/www \t"},
                                         ValueCase{"KEY_1 a b  c\n", "a b  c"},
                                         ValueCase{"KEY_1 a  b\n", "a  b"},
                                         ValueCase{"KEY_1 x", "x"}, ValueCase{"KEY_1 x\n", "x"},
                                         ValueCase{" \t KEY_1\t \tx\n", "x"},
                                         ValueCase{"# KEY_1 y\n\n  \nKEY_1 x\n#", "x"},
                                         ValueCase{"KEY_1 old\nKEY_1 new\n", "new"}));

struct BadLineCase {
    const char* line;
    const char* message;
};

class ConfBadLine : public testing::TestWithParam<BadLineCase> {};

TEST_P(ConfBadLine, IsReportedAndSkipped) {
    const LogCapture log;
    const Conf conf = parsed("BEFORE 1\n" + std::string(GetParam().line));
    EXPECT_STREQ("1", conf_get_r("BEFORE", conf.get()));
    EXPECT_EQ(1U, conf->nmemb);
    EXPECT_EQ(GetParam().message, log.text());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ConfBadLine,
    testing::Values(BadLineCase{"KEY=/x\n",
                                "12 Invalid variable definition KEY=/x\n\n"
                                "Expected a space after variable name\n|"},
                    BadLineCase{"KEY",
                                "12 Invalid variable definition KEY\n"
                                "Expected a space after variable name\n|"},
                    BadLineCase{"  =x\n",
                                "12 Invalid variable definition =x\n\n"
                                "Expected a space after variable name\n|"},
                    BadLineCase{"KEY#x y\n",
                                "12 Invalid variable definition KEY#x y\n\n"
                                "Expected a space after variable name\n|"},
                    BadLineCase{"KEY\n", "12 Invalid variable definition KEY\n\nExpected a value|"},
                    BadLineCase{"KEY  # x\n",
                                "12 Invalid variable definition KEY  # x\n\nExpected a value|"}));

TEST(Conf, FindsEveryKeyBeyondTheFirstAllocation) {
    std::string content;
    for (int i = 100; i-- > 0;) {
        content += "KEY_" + std::to_string(i) + " value" + std::to_string(i) + "\n";
    }
    const Conf conf = parsed(content);
    ASSERT_EQ(1, conf->finalized);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ("value" + std::to_string(i),
                  conf_get_r(("KEY_" + std::to_string(i)).c_str(), conf.get()));
    }
    EXPECT_EQ(nullptr, conf_get_r("KEY_100", conf.get()));
}

TEST(Conf, FindsAnUnsortedKey) {
    const Conf conf = emptyConf();
    ASSERT_EQ(0, conf_set_r("B", "2", conf.get()));
    ASSERT_EQ(0, conf_set_r("A", "1", conf.get()));
    EXPECT_EQ(0, conf->finalized);
    EXPECT_STREQ("1", conf_get_r("A", conf.get()));
    EXPECT_STREQ("2", conf_get_r("B", conf.get()));
    EXPECT_EQ(nullptr, conf_get_r("C", conf.get()));
}

TEST(Conf, ReadsALineOfAnyLength) {
    const std::string value(100000, 'v');
    EXPECT_EQ(value, conf_get_r("KEY", parsed("KEY " + value + "\n").get()));
}

TEST(Conf, ReportsAFileThatCannotBeOpened) {
    const TempDir dir;
    const LogCapture log;
    errno = 0;
    EXPECT_EQ(-1, conf_read_file_r(dir.path("none").c_str(), emptyConf().get()));
    EXPECT_EQ(ENOENT, errno);
    EXPECT_EQ("12 unable to open configuration file " + dir.path("none") +
                  ": No such file or directory\n|",
              log.text());
}

TEST(Conf, ReportsAFileThatCannotBeRead) {
    const TempDir dir;
    const LogCapture log;
    EXPECT_EQ(-1, conf_read_file_r(dir.path().c_str(), emptyConf().get()));
    EXPECT_EQ(EISDIR, errno);
    EXPECT_EQ("12 Unable to read configuration file: Is a directory|", log.text());
}

// The process-wide configuration, with a file's content already in memory.
class QrdConf : public testing::Test {
  protected:
    void TearDown() override {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
    }
};

TEST_F(QrdConf, PrefersTheFileToTheDefault) {
    theQrdConfHash = parsed("PRODUCT_ROOT_D /opt/qrd\nOTHER x\n").release();
    EXPECT_EQ(0, autoprepend());
    EXPECT_STREQ("/opt/qrd", qrdConfGetDefaultByIndex(PRODUCT_ROOT_D));
    EXPECT_STREQ("/opt/qrd", qrdConfGetDefault("PRODUCT_ROOT_D"));
    EXPECT_EQ(nullptr, qrdConfGetByIndex(DUMP_TMP_D));
    EXPECT_STREQ("/tmp", qrdConfGetDefaultByIndex(DUMP_TMP_D));
    EXPECT_STREQ("x", qrdConfGet("OTHER"));
    EXPECT_EQ(nullptr, qrdConfGet("DUMP_TMP_D"));
}

TEST_F(QrdConf, CachesOnlyWhatIsFound) {
    theQrdConfHash = parsed("X y\n").release();
    EXPECT_EQ(nullptr, qrdConfGetByIndex(PRODUCT_ROOT_D));
    ASSERT_EQ(0, conf_set_r("PRODUCT_ROOT_D", "/late", theQrdConfHash));
    const char* const found = qrdConfGetByIndex(PRODUCT_ROOT_D);
    EXPECT_STREQ("/late", found);
    EXPECT_EQ(found, qrdConfGetByIndex(PRODUCT_ROOT_D));
}

TEST_F(QrdConf, KnowsNoDefaultForANameOutsideTheTable) {
    theQrdConfHash = parsed("OTHER x\n").release();
    errno = 0;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(nullptr, qrdConfGetDefault("OTHER"));
    const std::string message =
        "variable 'OTHER' isn't found neither in /etc/qrd/qrd.conf nor in compile-time defaults\n";
    EXPECT_EQ(message, testing::internal::GetCapturedStderr());
    EXPECT_EQ(message, testing::internal::GetCapturedStdout());
}

TEST_F(QrdConf, HoldsNamesAndDefaultsAtTheirIndexes) {
    const auto row = [](int index) {
        return std::string(theQrdConfNames[index]) + "=" + theQrdConfDefauls[index];
    };
    EXPECT_EQ("_MIN_POSSIBLE_QRD_CONF_VAR_NAME=_MIN_POSSIBLE_QRD_CONF_VAR_VALUE", row(0));
    EXPECT_EQ("ZELVO_MAILNAMES_D=/var/qmail/mailnames", row(1));
    EXPECT_EQ("PGSQL_BIN_D=/usr/bin", row(16));
    EXPECT_EQ("DUMP_TMP_D=/tmp", row(22));
    EXPECT_EQ("PRODUCT_ROOT_D=/usr/local/qrd", row(30));
    EXPECT_EQ("_MAX_POSSIBLE_QRD_CONF_VAR_NAME=_MAX_POSSIBLE_QRD_CONF_VAR_VALUE", row(31));
    EXPECT_EQ(nullptr, qrdConfGetDefaultByIndex(-1));
    EXPECT_EQ(nullptr, qrdConfGetDefaultByIndex(32));
}

TEST_F(QrdConf, FallsBackAndTriesAgainWithoutAFile) {
    if (std::filesystem::exists("/etc/qrd/qrd.conf")) {
        GTEST_SKIP() << "this machine has a panel";
    }
    const LogCapture log;
    EXPECT_EQ(-1, autoprepend());
    EXPECT_STREQ("/usr/local/qrd", qrdConfGetDefaultByIndex(PRODUCT_ROOT_D));
    EXPECT_EQ(nullptr, qrdConfGet("PRODUCT_ROOT_D"));
    const std::string message =
        "12 unable to open configuration file /etc/qrd/qrd.conf: No such file or directory\n|";
    EXPECT_EQ(message + message + message, log.text());
}

}  // namespace
