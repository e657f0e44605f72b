// Accounts through the real program: what each word does to a client and a reseller, with all that
// an account can hold, and what the panel's utilities are told of it.

#include "dumps.h"

namespace {

TEST(Accounts, AreCreatedWithAllTheyHold) { runCases("accounts/created.txt"); }
TEST(Accounts, AreChangedAsTheWordSays) { runCases("accounts/words.txt"); }
TEST(Accounts, FailNoFurtherThanTheyMust) { runCases("accounts/failing.txt"); }

// Catches: an account that nobody can enter, because it is created with one random password and
// updated with another.
TEST(Accounts, GetOneRandomPasswordForAnEmptyOne) {
    const std::pair<std::string, std::string> kRows[] = {
        {"", "client --update bob -login bob\n"},
        {"<properties/>", "QRD_PASSWORD=RANDOM client --update bob -login bob -passwd ''\n"},
        {"<properties><password type='plain'/></properties>",
         "QRD_PASSWORD=RANDOM client --update bob -login bob -passwd ''\n"}};
    for (const auto& [properties, update] : kRows) {
        SCOPED_TRACE(properties);
        Sandbox box;
        prepare(box, {"", {{"dump", "<client name='bob'>" + properties + "</client>"}}});
        box.succeeds(deployOptions());
        const std::string calls = callsOf(box);
        std::smatch found;
        ASSERT_TRUE(std::regex_search(calls, found, std::regex("^QRD_PASSWORD=([a-zA-Z0-9]{7}) ")))
            << calls;
        EXPECT_EQ(std::regex_replace(calls, std::regex(found.str(1)), "RANDOM"),
                  "QRD_PASSWORD=RANDOM client --create bob -name bob -notify false -passwd '' "
                  "-owner admin\n" +
                      update + "bare correct_aw_statistics.pl\n");
        EXPECT_NE(box.logText().find("No empty passwords are allowed for sysuser. New password "
                                     "will be generated and sent by mail to the respective user."),
                  std::string::npos);
        expectNoPasswordInArguments(box);
    }
}

}  // namespace
