#include "repository/names.h"

#include <gtest/gtest.h>

#include "repository/creation_date.h"
#include "repository/repository_errors.h"
#include "repository/urls.h"
#include "told.h"

namespace zelvo {
namespace {

const std::string kLabel = "1203011530";

// Catches: a file that is taken for a part of another backup, and is deleted with it.
TEST(RepositoryNames, BelongToOneLabel) {
    const struct {
        const char* name;
        const char* matches;  // f: file, i: info document, d: discovered, D: directory
    } rows[] = {
        {"a_info_1203011530.xml", "fi"}, {"a_info_1203011530", "dD"},
        {"info_1203011530.xml", "fi"},   {"a_1203011530.tgz1", "f"},
        {"a_1203011530.tar.gz", ""},     {"a_1203011530", "D"},
        {"a_1203011531.tgz", ""},        {"_1203011530.", "f"},
        {"1203011530.tgz", ""},          {"a_1203011530.1203011530.", ""},
    };
    for (const auto& row : rows) {
        std::string matches;
        matches += FileMatchToLabel(row.name, kLabel) ? "f" : "";
        matches += InfoXmlMatchToLabel(row.name, kLabel) ? "i" : "";
        matches += DiscoveredMatchToLabel(row.name, kLabel) ? "d" : "";
        matches += DirMatchToLabel(row.name, kLabel) ? "D" : "";
        EXPECT_EQ(row.matches, matches) << row.name;
    }
    EXPECT_TRUE(IsFtpDumpName("a_1203011530.tgz"));
    EXPECT_FALSE(IsFtpDumpName("a_1203011530.tgz1"));
    EXPECT_TRUE(PathBeginsWith("a", "a/b") && PathBeginsWith("a", "a"));
    EXPECT_FALSE(PathBeginsWith("a", "ab"));
}

// Catches: parts of another archive, or a number that wraps round, joined into one.
TEST(RepositoryNames, TellPartsOfAFile) {
    const auto part = [](const std::string& name) {
        unsigned number = 99;
        return IsSplittedPart("a", name, number) ? std::to_string(number) : "none";
    };
    const char* const rows[][2] = {
        {"a", "0"},      {"a12", "12"}, {"a1b", "none"},        {"b1", "none"},
        {"a-1", "none"}, {"", "none"},  {"a4294967296", "none"}};
    for (const auto& row : rows) {
        EXPECT_EQ(row[1], part(row[0])) << row[0];
    }
}

TEST(RepositoryNames, CarryTheLabelAndThePrefix) {
    const char* const rows[][3] = {
        // Path, label as an archive, label as an info document.
        {"d/p_x_1203011530.tgz", "1203011530",
         "file name 'p_x_1203011530.tgz' not ends with '.xml'"},
        {"p_info_1203011530.xml", "1203011530", "1203011530"},
        {"d_1/p.tgz", "file name 'p.tgz' not contains '_'",
         "file name 'p.tgz' not ends with '.xml'"},
        {"p_1203011530.xml", "1203011530", "file name 'p_1203011530.xml' not contains 'info_'"},
        {"p_info_.xml", "file name 'p_info_.xml' has wrong format",
         "file name 'p_info_.xml' has wrong format"},
        {"p_info_12030115300.xml", "file name 'p_info_12030115300.xml' has wrong format",
         "file name 'p_info_12030115300.xml' has wrong format"},
    };
    for (const auto& row : rows) {
        std::string label;
        std::string told = messageOf([&] { label = GetDumpLabel(row[0]); });
        EXPECT_EQ(row[1], label + told);
        label.clear();
        told = messageOf([&] { label = GetInfoXmlsLabel(row[0]); });
        EXPECT_EQ(row[2], label + told);
    }
    EXPECT_EQ("p", GetDumpPrefix("d_1/p_x_1.tgz"));
    EXPECT_EQ("d/.discovered/p_info_1", GetDiscoveredDir("d/p_info_1.xml"));
    EXPECT_EQ(".discovered/p_info_1", GetDiscoveredDir("p_info_1.xml"));
}

TEST(RepositoryNames, StandAroundTheDiscoveredDirectory) {
    const auto around = [](const std::string& path, const std::string& label) {
        std::string before = "-";
        std::string behind = "-";
        const bool is = label.empty() ? IsAnyDiscoveredPath(path, before, behind)
                                      : IsDiscoveredPath(path, label, before, behind);
        return is ? before + "|" + behind : "none";
    };
    EXPECT_EQ("a/b|c/d", around("a/b/.discovered/c/d", ""));
    EXPECT_EQ("|", around(".discovered", ""));
    EXPECT_EQ("none", around("a.discovered/c", ""));
    EXPECT_EQ("none", around("a/.discovered/p_info_1203011531/x", kLabel));
    EXPECT_EQ("a|p_info_1203011530/x", around("a/.discovered/p_info_1203011530/x", kLabel));
}

// Catches: a path below another one that is kept because a third one stands between them.
TEST(RepositoryNames, SortToTheTopPathsAlone) {
    EXPECT_EQ((std::vector<std::string>{"a", "a.b", "b/c"}),
              SortPaths({"b/c", "a/c", "a.b", "a", "a.b", "b/c/d/e"}));
}

// Catches: a password that is shown as a part of the place, or a login that is lost.
TEST(RepositoryUrls, ComeApart) {
    const char* const rows[][5] = {
        // URL, login, place, base, name.
        {"ftp://u:p@h/d", "u:p", "ftp://h/d", "ftp://u:p@h/", "d"},
        {"ftp://u:p@q@h/d/", "u:p@q", "ftp://h/d/", "ftp://u:p@q@h/d/", ""},
        {"u@", "u", "", "", "u@"},
        {"ftp://h", "", "ftp://h", "ftp://", "h"},
        {"/var/dump/x", "", "/var/dump/x", "/var/dump/", "x"},
        {"u@ftp://h", "", "u@ftp://h", "u@ftp://", "h"},
    };
    for (const auto& row : rows) {
        std::string base;
        std::string name;
        DecomposeUrl(row[0], base, name);
        EXPECT_EQ(row[1], GetUrlLogin(row[0]));
        EXPECT_EQ(row[2], GetUrlPlace(row[0]));
        EXPECT_EQ(row[3], base);
        EXPECT_EQ(row[4], name);
    }
    std::string base;
    std::vector<std::string> names;
    DecomposeUrls({"a/1", "a/2"}, base, names);
    EXPECT_EQ((std::vector<std::string>{"1", "2"}), names);
    EXPECT_EQ("Unable to decompose urls: urls have diffrent base dirs", messageOf([&] {
                  DecomposeUrls({"1", "a/2"}, base, names);
              }));
}

// Catches: a label that is another minute after it was read and written, or a day that is none.
TEST(CreationDate, IsItsLabel) {
    CreationDateMixin date;
    for (const char* label : {"1203011530", "0001010000", "6812312359", "7001020000"}) {
        date.SetDateTimeStr(label);
        EXPECT_EQ(label, date.GetDateTimeStr());
    }
    for (const char* text :
         {"1202301530", "1203012400", "120301153", "12030115 0", "12030115300"}) {
        EXPECT_EQ("date '" + std::string(text) + "' has wrong format",
                  messageOf([&] { date.SetDateTimeStr(text); }));
    }
}

}  // namespace
}  // namespace zelvo
