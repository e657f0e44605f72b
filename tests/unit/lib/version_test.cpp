#include "lib/version.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

using zelvo::Version;

namespace {

Version versionOf(const std::string& text) {
    Version version;
    version.setVersionReleaseData(text.c_str());
    return version;
}

// -1, 0 or 1.
int order(const Version& a, const Version& b) {
    EXPECT_EQ(1, a.isLess(b) + a.isEqual(b) + a.isGreater(b)) << a << " and " << b;
    return a.isGreater(b) - a.isLess(b);
}

int order(const std::string& a, const std::string& b) { return order(versionOf(a), versionOf(b)); }

std::string itemsOf(const Version& version) {
    std::string items;
    for (std::size_t n = 0; version.getVersionItem(n) != nullptr; ++n) {
        items += std::string("<") + version.getVersionItem(n) + ">";
    }
    return items;
}

std::string display(const Version& version) {
    char* text = nullptr;
    std::size_t size = 0;
    FILE* const file = open_memstream(&text, &size);
    version.displayVersion(file);
    fclose(file);
    std::string shown(text, size);
    free(text);
    return shown;
}

}  // namespace

// The vectors that RPM publishes for its own ordering, as far as they are about this form, and
// where the orders part: a zero in front makes a text of a number here, and nothing but "."
// separates without being compared.
TEST(Version, IsOrderedAsPackageManagersOrder) {
    const char* const rows[] = {
        "1.0 = 1.0", "1.0 < 2.0", "2.0.1 = 2.0.1", "2.0 < 2.0.1", "2.0.1a = 2.0.1a",
        "2.0.1a > 2.0.1", "5.5p1 = 5.5p1", "5.5p1 < 5.5p2", "5.5p10 = 5.5p10", "5.5p1 < 5.5p10",
        "10xyz < 10.1xyz", "xyz10 = xyz10", "xyz10 < xyz10.1", "xyz.4 = xyz.4", "xyz.4 < 8",
        "xyz.4 < 2", "5.5p2 < 5.6p1", "5.6p1 < 6.5p1", "6.0.rc1 > 6.0", "10b2 > 10a1",
        "10a2 < 10b2", "1.0aa = 1.0aa", "1.0a < 1.0aa", "10.0001 = 10.0001", "10.0001 < 10.0039",
        "4.999.9 < 5.0", "20101121 = 20101121", "20101121 < 20101122", "2_0 = 2_0", "1.0^ > 1.0",
        // Ordered otherwise there.
        "10.0001 < 10.1", "2.0 < 2_0", "a+ < a_", "1.0~rc1 > 1.0",
        // The rules' own edges.
        "1.2 < 1.2.0", "09 < 1", "1..2 = 1.2", "2:1.0 > 1:9.9", "0:1.0 > 9.9", ":1.0 > 9.9",
        "-1:1 < 0:1", "1.0-1 > 1.0", "1.0-2 < 1.0-10", "1-1-1 < 1-1-2", "4294967297 = 1",
        "2147483648 < 1"};
    for (const std::string row : rows) {
        std::istringstream words(row);
        std::string a, sign, b;
        words >> a >> sign >> b;
        const int expected = sign == "<" ? -1 : sign == ">" ? 1 : 0;
        EXPECT_EQ(order(a, b), expected) << row;
        EXPECT_EQ(order(b, a), -expected) << row;
    }
}

TEST(Version, HasItems) {
    EXPECT_EQ(itemsOf(versionOf("1.2a")), "<1><2><a>");
    EXPECT_EQ(itemsOf(versionOf("3:..10.rc2~-5")), "<10><rc><2><~>");
    const std::string longItem(300, '7');
    EXPECT_EQ(itemsOf(versionOf(longItem + "a")), "<" + longItem.substr(0, 255) + "><a>");
    // An epoch of more than 31 characters.
    EXPECT_EQ(order(std::string(30, '0') + "12:1", std::string(30, '0') + "13:1"), 0);
    const Version version = versionOf("1-2b");
    EXPECT_STREQ(version.getReleaseItem(1), "b");
    EXPECT_EQ(version.getReleaseItem(2), nullptr);
}

TEST(Version, KeepsWhatItHasForAnEmptyText) {
    Version version = versionOf("1.0-5");
    for (const char* text : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(version.setVersionData(text), -1);
        EXPECT_EQ(version.setReleaseData(text), -1);
        EXPECT_EQ(version.setVersionReleaseData(text), -1);
    }
    EXPECT_TRUE(version.isEqual(versionOf("1.0-5")));
    EXPECT_EQ(version.setVersionReleaseData("2-"), -1);
    EXPECT_TRUE(version.isEqual(versionOf("2-5")));
    EXPECT_EQ(version.setVersionReleaseData("3"), 0);
    EXPECT_TRUE(version.isEqual(versionOf("3-5")));
    version.setVersionData("2:3");
    EXPECT_EQ(version.setVersionData("3"), 0);
    EXPECT_TRUE(version.isEqual(versionOf("3-5"))) << "an old epoch stays";
}

TEST(Version, IsPrinted) {
    EXPECT_EQ(display(Version()), "[ --- empty version data --- ]");
    EXPECT_EQ(display(versionOf(".")), "");
    EXPECT_EQ(display(versionOf("2:1.rc3-05")), "[2] : [1] \"rc\" [3]  [ --- ] \"05\" ");
    std::ostringstream stream;
    stream << versionOf("2:1.rc3-05") << " " << versionOf("1");
    EXPECT_EQ(stream.str(), "2:1.rc3-05 1");
}
