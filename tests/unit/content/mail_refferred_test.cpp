#include "content/mail_refferred.h"

#include <regex>

#include "collecting.h"
#include "commons/files.h"
#include "content/mail_list_refferred.h"

using namespace test;
using testing::ElementsAre;
using zelvo::DomainMailListRefferred;
using zelvo::DomainMailRefferred;

namespace {

class MailCollectionTest : public Collecting {
  protected:
    MailCollectionTest() {
        // The mail user's scripts note their calls in it.
        std::ofstream(box("calls")).close();
        EXPECT_EQ(0, chmod(box("calls").c_str(), 0666));
        for (const char* script : {"mb2md.pl", "sa_convert.sh"}) utility(rmk(script));
        utility(zelvo::files::getDirectCliUtilityPath("autoresponder"),
                "cat \"${6#add:}\" >> " + box("calls"));
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

// Catches a file of this server that is mailed out, a whole archive that is unpacked for each mail
// name or for nothing, and what stays behind in the temporary directory, or is removed there.
TEST_F(MailCollectionTest, HandsOverAttachmentsOfItsOwnOnly) {
    const std::string secret = dir.write("secret", "secret\n");
    unpacker.work = [&](const std::string& to) {
        if (!to.starts_with(rmk("tmp"))) return;
        unpacked.push_back(testing::PrintToString(unpacker.includes));
        const std::string of = to + "/at/";
        std::filesystem::create_directories(of);
        std::ofstream(of + "hello") << "Hello\n";
        std::ofstream(of + "a,b") << "comma\n";
        std::filesystem::create_symlink(secret, of + "link");
        std::filesystem::create_symlink(dir.path(""), of + "dir");
    };
    std::filesystem::create_directory(rmk("tmp/a.com"));
    for (const std::string domain : {"a.com", "b.com"}) {
        DomainMailRefferred collection(Element({{"domainmail", "w", ""}}), false, domain);
        collection.addMailNameResponder(
            Element({{"attaches", domain == "a.com" ? "w" : "own", "at"}}), "joe");
        collection.addMailNameResponder(Element({{"attaches", "w", "off"}}), "ann");
        collection.addMailNameResponder(Element({{"attaches", "w", "at"}}), "ben");
        collection.addMailNameResponderAttach("ben", "out", {"hello"});
        collection.addMailNameRespondersAttaches("joe", {"hello"});
        collection.addMailNameRespondersAttaches("ann", {"hello"});
        collection.addMailNameResponderAttach(
            "joe", "away", {"hello", "link", "dir/secret", "../../../secret", "a,b", "none"});
        collection.addMailNameResponderAttach("joe", "--off", {"hello"});
        collection.addMailNameResponderAttach("jim", "away", {"hello"});
        collection.addMailNameRespondersAttaches("jim", {"hello"});
        collection.Extract(unpacker);
    }
    const auto call = [](const std::string& of, const std::string& path) {
        return "autoresponder -u " + of +
               " -attach add:" + rmk("tmp/migration-unpack-XXXXXX/" + path + "at/hello") +
               "\nHello\n";
    };
    EXPECT_EQ(calls(), call("away -mail joe@a.com", "") + call("out -mail ben@a.com", "") +
                           call("away -mail joe@b.com", "joe/") + call("out -mail ben@b.com", ""));
    const std::string ofAll = "{ \"at\", \"off\", \"at\" }";
    EXPECT_THAT(unpacked, ElementsAre(ofAll, "{ \"at\" }", "{ \"off\", \"at\" }"));
    EXPECT_TRUE(std::filesystem::remove(rmk("tmp/a.com")));
    EXPECT_TRUE(std::filesystem::is_empty(rmk("tmp")));
    EXPECT_EQ(result.messages.size(), 12U);
    EXPECT_EQ(result.messages.front(),
              "CantUnpackAttachments: Unable to unpack mail attachments for joe on domain a.com");
    EXPECT_THAT(
        log.lines,
        testing::IsSupersetOf(
            {"Add responder 'away' attach for mailname joe",
             "Cannot add autoresponder 'away' attach for mailname 'jim'. Mail name not found!",
             "Cannot add autoresponders attaches for mailname 'jim'. Mail name not found!",
             "Create autoresponders attaches files of joe@a.com(archives[attaches]: w,)"}));
}

// Catches a rebuild that is missed, done twice, or done for a list that was not unpacked.
TEST_F(MailCollectionTest, RebuildsTheArchivesOfUnpackedLists) {
    panelBox.dir.write("etc/qrd/qrd.conf", contentOf(box("etc/qrd/qrd.conf")) + "MAILMAN_ROOT_D " +
                                               box("mailman") + "\n");
    utility(zelvo::files::getMailmanArchFileName());
    const auto extract = [&] {
        DomainMailListRefferred collection(Element({{"domainmaillist", "w", ""}}), "a.com");
        collection.addMailList(Element({{"mailbox", "w", "news.mbox"}}), "news");
        collection.addMailList(Element({{"mailbox", "own", "talk.mbox"}}), "talk");
        collection.addMailList(Element({{"mailbox", "own", "part"}}), "old");
        collection.addMailList(Element({{"mailbox", "own", ""}}), "-x");
        collection.Extract(unpacker);
    };
    extract();
    EXPECT_THAT(unpacked, ElementsAre("lists/archives/private/ news.mbox",
                                      "lists/archives/private/ talk.mbox",
                                      "lists/archives/private/old.mbox part"));
    const std::string once = "arch news\narch talk\narch old\n";
    EXPECT_EQ(calls(), once);
    fails = [&](const std::string&) { return unpacker.includes.front() == "news.mbox"; };
    extract();
    EXPECT_EQ(calls(), once + "arch talk\narch old\n");
    EXPECT_THAT(result.messages,
                ElementsAre(lostMailbox("-x"),
                            "UnExpectedResult: The resutl of operaion is unexpected: broken",
                            lostMailbox("-x")));
}
