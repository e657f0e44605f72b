// Mail users through the real program: what they have, how far a failure reaches, and their mail in
// its place.

#include "scenario.h"

namespace {

TEST(Mail, HasItsUsersAndItsSettings) { runCases("mail/users.txt"); }
TEST(Mail, GetsItsContentAfterItsUsers) { runCases("mail/content.txt"); }

}  // namespace
