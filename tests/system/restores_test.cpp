// Whole restores through the real program, as texts: what they are about stands in each of them.

#include "scenario.h"

namespace {

TEST(Accounts, AreCreatedWithAllTheyHold) { runCases("accounts/created.txt"); }
TEST(Accounts, AreChangedAsTheWordSays) { runCases("accounts/words.txt"); }
TEST(Accounts, FailNoFurtherThanTheyMust) { runCases("accounts/failing.txt"); }
TEST(Mail, HasItsUsersAndItsSettings) { runCases("mail/users.txt"); }
TEST(Mail, GetsItsContentAfterItsUsers) { runCases("mail/content.txt"); }
TEST(Run, GoesThroughItsStages) { runCases("options/runs.txt"); }
TEST(Run, SetsTheDefaultDomainsOfAddresses) { runCases("options/default_domains.txt"); }
TEST(Server, IsConfigured) { runCases("server/configuration.txt"); }
TEST(Server, GetsItsSettings) { runCases("server/settings.txt"); }
TEST(SiteApplications, ComeFromTheVaultToTheClients) { runCases("site_apps/vault.txt"); }
TEST(SiteApplications, AreInstalled) { runCases("site_apps/installed.txt"); }
TEST(Sites, AreTurnedOnAndSetInTheirOrder) { runCases("sites/hosting.txt"); }
TEST(Sites, GetTheirContentAfterItsOwnersExist) { runCases("sites/content.txt"); }
TEST(Sites, HaveSubdomains) { runCases("sites/subdomains.txt"); }
TEST(Sites, HaveDirectoriesAndWebUsers) { runCases("sites/directories_and_web_users.txt"); }
TEST(Sites, ForwardToOthers) { runCases("sites/forwarding.txt"); }
TEST(SpamFilters, GetTheirSettingsAndLists) { runCases("mail/filters.txt"); }
TEST(Templates, HoldAllTheirItems) { runCases("templates/items.txt"); }
TEST(Templates, BelongToAccountsAndTheServer) { runCases("templates/owned.txt"); }

}  // namespace
