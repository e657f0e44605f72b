#include "content/mail_refferred.h"

#include <regex>

#include "collecting.h"

using namespace test;
using testing::ElementsAre;
using zelvo::DomainMailRefferred;

namespace {

class MailCollectionTest : public Collecting {
  protected:
    MailCollectionTest() {
        // The mail user's scripts note their calls in it.
        std::ofstream(box("calls")).close();
        EXPECT_EQ(0, chmod(box("calls").c_str(), 0666));
        for (const char* script : {"mb2md.pl", "sa_convert.sh"}) utility(rmk(script));
    }
    // The calls without the variable part of temporary names.
    static std::string calls() {
        static const std::regex kRandom("migration-unpack-[^/ ]{6}");
        return std::regex_replace(Collecting::calls(), kRandom, "migration-unpack-XXXXXX");
    }
};

std::string lostMailbox(const std::string& name) {
    return "CantUnpackMailboxContent: Unable to unpack mailbox content for " + name +
           " on domain a.com";
}

}  // namespace

// Catches a mailbox that is not converted, converted from elsewhere, or that loses another.
TEST_F(MailCollectionTest, UnpacksAndConvertsMailboxes) {
    const Element mail({{"domainmail", "w", ""}});
    DomainMailRefferred collection(mail, true, "a.com");
    collection.addMailName(Element({{"mailbox", "own", "Maildir"}}), "plain");
    collection.addMailName(Element({{"mailbox", "own", "off"}}, "type='mbox'"), "old");
    collection.addMailName(
        Element({{"mailbox", "w", "m"}, {"mailbox_inbox", "w", "none"}}, "type='mbox'"), "whole");
    collection.addMailName(Element({{"mailbox", "own", "a.com/up/Maildir"}}), "up");
    collection.addMailName(Element({{"mailbox", "own", ""}}), "../joe");
    collection.addMailName(Element({{"mailbox", "own", ""}}), "-joe");
    collection.addMailNameSpamassasin(Element({{"spam-assasin", "own", ""}}), "plain");
    std::filesystem::create_directories(box("mail/a.com/m"));
    collection.Extract(unpacker);
    EXPECT_THAT(unpacked,
                ElementsAre("mail/a.com m none", "mail/a.com/plain/ Maildir",
                            "tmp/migration-unpack-XXXXXX off", "mail/a.com/plain/.spamassassin"));
    EXPECT_EQ(calls(), "mb2md -s " + box("tmp/migration-unpack-XXXXXX") + " -R -d " +
                           box("mail/a.com/old/Maildir") + "\nmb2md -s " + box("mail/a.com/m") +
                           " -R -d " + box("mail/a.com/whole/Maildir") + "\nsa_convert " +
                           box("mail/a.com/plain/.spamassassin") + "\n");
    EXPECT_THAT(result.messages, ElementsAre(lostMailbox("whole"), lostMailbox("up"),
                                             lostMailbox("../joe"), lostMailbox("-joe")));
    EXPECT_THAT(log.lines,
                testing::IsSupersetOf(
                    {"Extracting the mailbox of plain (archives[mailbox]: own,)",
                     "Converting the Mbox-formatted mail of old (archives[mailbox]: own,)",
                     "Converting the Mbox-formatted INBOX of whole(archives[mailbox_inbox]: w,)"}));
}
