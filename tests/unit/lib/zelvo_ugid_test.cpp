#include "lib/zelvo_ugid.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

constexpr const char* kNobody = "no-such-name-here";

TEST(Ugid, FindsUsersAndGroups) {
    EXPECT_EQ(0U, get_user_id("root"));
    EXPECT_EQ(0U, zelvo_getpw("root")->pw_uid);
    EXPECT_EQ(0U, get_group_id("root"));
    EXPECT_EQ(0U, get_group_id("0"));
    EXPECT_STREQ("root", get_user_name(0));
    EXPECT_STREQ("4000000000", get_user_name(4000000000U));
}

TEST(Ugid, GivesBothIdsOrAnErrorNumber) {
    const passwd daemon = *zelvo_getpw("daemon");
    uid_t uid = 77;
    gid_t gid = 77;
    EXPECT_EQ(-1, zelvo_ugid(kNobody, &uid, &gid));
    EXPECT_EQ(ENOENT, errno);
    EXPECT_EQ(77U, uid);
    EXPECT_EQ(0, zelvo_ugid("daemon", &uid, &gid));
    EXPECT_EQ(daemon.pw_uid, uid);
    EXPECT_EQ(daemon.pw_gid, gid);
    EXPECT_EQ(0, zelvo_ugid("daemon", nullptr, nullptr));
}

TEST(Ugid, EndsTheProcessForWhatIsUnknown) {
    const auto ended = testing::ExitedWithCode(1);
    EXPECT_EXIT(get_user_id(kNobody), ended,
                "^Unable to find uid for user no-such-name-here: No such file or directory\n"
                "System error 2: No such file or directory\n$");
    EXPECT_EXIT(zelvo_getpw(kNobody), ended, "^Unable to getpwnam for user no-such-name-here\n");
    EXPECT_EXIT(get_group_id(kNobody), ended, "^getgrnam\\(no-such-name-here\\): No such file");
    EXPECT_EXIT(get_group_id("3999999999"), ended, "^getgrgid\\(-294967297\\): No such file");
    EXPECT_EXIT(get_group_id("99999999999"), ended, "^getgrnam\\(99999999999\\): No such file");
}

}  // namespace
