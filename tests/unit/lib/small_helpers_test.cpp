#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "lib/admin_password.h"
#include "lib/libcommon.h"
#include "lib/libsafe.h"
#include "temp_dir.h"

// An allocation that fails is what these tests are about; the sanitizer would end the process.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

TEST(Libsafe, EndsTheProcessWithoutMemory) {
    volatile std::size_t tooMuch = SIZE_MAX / 2;
    const auto ended = testing::ExitedWithCode(1);
    EXPECT_EXIT(malloc_safe(tooMuch), ended, "alloc\\(-1\\)\n");
    EXPECT_EXIT(realloc_safe(nullptr, tooMuch), ended, "alloc\\(-1\\)\n");
}

TEST(Libsafe, Formats) {
    char* text = nullptr;
    EXPECT_EQ(4, asprintf_safe(&text, "%s=%d", "ab", 1));
    EXPECT_STREQ("ab=1", text);
    text = static_cast<char*>(realloc_safe(text, 100));
    EXPECT_STREQ("ab=1", text);
    free(text);
}

TEST(Libcommon, TellsNumbersFromNames) {
    EXPECT_TRUE(is_number("0042"));
    for (const char* const text : {"", "-1", "1a", " 1", "1.5"}) {
        EXPECT_FALSE(is_number(text)) << text;
    }
    EXPECT_FALSE(is_number(nullptr));
    EXPECT_TRUE(isempty(nullptr));
    EXPECT_TRUE(isempty(""));
    EXPECT_FALSE(isempty(" "));
}

TEST(Libcommon, JudgesSubdirectoriesByTheirRealPaths) {
    const TempDir dir;
    std::filesystem::create_directories(dir.path("a/b"));
    std::filesystem::create_directories(dir.path("ab"));
    std::filesystem::create_symlink("a/b", dir.path("link"));
    const auto is = [&](const char* parent, const char* child) {
        return issubdir(dir.path(parent).c_str(), dir.path(child).c_str());
    };
    EXPECT_TRUE(is("a", "a/b"));
    EXPECT_TRUE(is("a", "link"));
    EXPECT_TRUE(is("a/", "a"));
    EXPECT_FALSE(is("a", "ab"));
    EXPECT_FALSE(is("a", "a/../ab"));
    EXPECT_FALSE(is("a/b", "a"));
    EXPECT_FALSE(is("a", "a/none"));
    EXPECT_TRUE(issubdir("/", dir.path().c_str()));
}

TEST(AdminPassword, IsTheFirstLine) {
    const TempDir dir;
    const auto read = [&](const std::string& content) {
        return std::string(read_admin_password(dir.write("shadow", content).c_str()));
    };
    EXPECT_EQ("secret", read("secret\n"));
    EXPECT_EQ("secret", read("secret"));
    EXPECT_EQ(" s e ", read(" s e \nsecond\n"));
    EXPECT_EQ("", read(""));
    EXPECT_EQ(std::string(4095, 'p'), read(std::string(5000, 'p') + "\n"));
}

TEST(AdminPassword, EndsTheProcessWithoutAFile) {
    const TempDir dir;
    const auto ended = testing::ExitedWithCode(1);
    EXPECT_EXIT(read_admin_password(dir.path("none").c_str()), ended,
                "^Unable to open admin password file\n");
    EXPECT_EXIT(read_admin_password(dir.path().c_str()), ended,
                "^Unable to read admin password file\n");
}

}  // namespace
