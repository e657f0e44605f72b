#include "lib/read_configuration.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include <cerrno>
#include <cstdlib>

#include "lib/liblog.h"
#include "temp_dir.h"

namespace {

// The process-wide configuration, as new. What is logged goes to standard error.
class Conf : public testing::Test {
  protected:
    Conf() { zelvo_log_init("console", LOG_WARNING, 0, 0, nullptr); }
    ~Conf() override { forget(); }

    static void forget() {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
    }
    // Reads a file as if it stood in its place; returns what was logged.
    static std::string read(const std::string& path) {
        forget();
        theQrdConfHash = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
        testing::internal::CaptureStderr();
        errno = 0;
        const int result = conf_read_file_r(path.c_str(), theQrdConfHash);
        EXPECT_EQ(errno == 0 ? 0 : -1, result);
        return testing::internal::GetCapturedStderr();
    }
    static std::string readText(const std::string& text) {
        return read(TempDir().write("conf", text));
    }
};

// Catches: a value that ends elsewhere than existing files expect.
TEST_F(Conf, EndsAValue) {
    const char* const rows[][2] = {{"/v/w\n", "/v/w"},         {"/v/w # why\n", "/v/w"},
                                   {"/v/w#why\n", "/v/w"},     {"/v/w  # y\n", "/v/w  "},
                                   {"/v/w   # y\n", "/v/w  "}, {"/v/w \n", "/v/w \n"},
                                   {"/v/w\r\n", "/v/w\r\n"},   {"/v/w \t\n", "/v/w \t"},
                                   {"a b  c\n", "a b  c"},     {"x", "x"},
                                   {"\t\tx\n\n# K_1 z", "x"},  {"old\nK_1 new\n", "new"}};
    for (const auto& [line, value] : rows) {
        EXPECT_EQ("", readText(" \t K_1 " + std::string(line)));
        EXPECT_STREQ(value, qrdConfGet("K_1")) << line;
    }
}

TEST_F(Conf, ReportsAndSkipsABadLine) {
    for (const std::string line : {"K=/x\n", "K", "=x\n", "K#x y\n", "K\n", "K  # x\n"}) {
        const bool hasSpace = line == "K\n" || line == "K  # x\n";
        EXPECT_EQ(
            "Invalid variable definition " + line +
                (hasSpace ? "\nExpected a value\n" : "\nExpected a space after variable name\n"),
            readText("K y\n  " + line));
        EXPECT_STREQ("y", qrdConfGet("K"));
        EXPECT_EQ(1U, theQrdConfHash->nmemb);
    }
}

TEST_F(Conf, FindsEveryKeySortedOrNot) {
    std::string text = "LONG " + std::string(100000, 'v') + "\n";
    for (int i = 99; i > 0; --i) text += "K" + std::to_string(i) + " " + std::to_string(i) + "\n";
    readText(text);
    for (const int finalized : {1, 0}) {
        EXPECT_EQ(finalized, theQrdConfHash->finalized);
        for (int i = 1; i < 100; ++i) {
            EXPECT_EQ(std::to_string(i), qrdConfGet(("K" + std::to_string(i)).c_str()));
        }
        EXPECT_EQ(std::string(100000, 'v'), qrdConfGet("LONG"));
        EXPECT_EQ(nullptr, qrdConfGet("K100"));
        conf_set_r("A", "unsorts", theQrdConfHash);
    }
}

TEST_F(Conf, PrefersTheFileToTheDefault) {
    readText("HTTPD_VHOSTS_D /v\nOTHER x\n");
    EXPECT_STREQ("/v", qrdConfGetDefault("HTTPD_VHOSTS_D"));
    EXPECT_STREQ("/usr/local/qrd", qrdConfGetDefaultByIndex(30));
    EXPECT_EQ(nullptr, qrdConfGetDefaultByIndex(-1));
    EXPECT_EQ(nullptr, qrdConfGetDefaultByIndex(32));
    // What was not found is looked for again.
    conf_set_r("PRODUCT_ROOT_D", "/late", theQrdConfHash);
    EXPECT_STREQ("/late", qrdConfGetDefaultByIndex(PRODUCT_ROOT_D));
    // Only names of the table have defaults.
    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, qrdConfGetDefault("OTHER"));
    EXPECT_EQ(0U, testing::internal::GetCapturedStderr().find(
                      "variable 'OTHER' isn't found neither in /etc/qrd/qrd.conf nor in comp"));
}

TEST_F(Conf, ReportsAFileThatCannotBeReadAndTriesAgain) {
    EXPECT_EQ("Unable to read configuration file: Is a directory\n", read("/"));
    EXPECT_EQ(EISDIR, errno);
    zelvo_log_init("console", LOG_ERR, 0, 0, nullptr);
    EXPECT_EQ("", read("/")) << "it is but a warning";
    zelvo_log_init("console", LOG_WARNING, 0, 0, nullptr);
    forget();
    if (std::filesystem::exists("/etc/qrd")) GTEST_SKIP() << "this machine has a panel";
    for (int tries = 0; tries < 2; ++tries) {
        testing::internal::CaptureStderr();
        EXPECT_STREQ("/usr/local/qrd", qrdConfGetDefaultByIndex(PRODUCT_ROOT_D));
        EXPECT_EQ(ENOENT, errno);
        EXPECT_EQ(
            "unable to open configuration file /etc/qrd/qrd.conf: No such file or directory\n",
            testing::internal::GetCapturedStderr());
        EXPECT_EQ(nullptr, qrdConfGet("PRODUCT_ROOT_D"));
    }
}

}  // namespace
