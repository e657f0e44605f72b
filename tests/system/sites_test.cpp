// Web sites through the real program: their settings, their content in its place with its owners,
// and what lives in them.

#include "scenario.h"

namespace {

TEST(Sites, AreTurnedOnAndSetInTheirOrder) { runCases("sites/hosting.txt"); }
TEST(Sites, GetTheirContentAfterItsOwnersExist) { runCases("sites/content.txt"); }
TEST(Sites, HaveSubdomains) { runCases("sites/subdomains.txt"); }
TEST(Sites, HaveDirectoriesAndWebUsers) { runCases("sites/directories_and_web_users.txt"); }
TEST(Sites, ForwardToOthers) { runCases("sites/forwarding.txt"); }

}  // namespace
