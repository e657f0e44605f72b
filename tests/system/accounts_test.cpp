// Accounts through the real program: what each word does to a client and a reseller, with all that
// an account can hold, and what the panel's utilities are told of it.

#include "scenario.h"

namespace {

TEST(Accounts, AreCreatedWithAllTheyHold) { runCases("accounts/created.txt"); }
TEST(Accounts, AreChangedAsTheWordSays) { runCases("accounts/words.txt"); }
TEST(Accounts, FailNoFurtherThanTheyMust) { runCases("accounts/failing.txt"); }

}  // namespace
