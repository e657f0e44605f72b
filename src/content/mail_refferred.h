// The content of a domain's mail names: mailboxes, attachments of automatic answers, data of the
// spam filter.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "content/mailbox_refferred.h"
#include "content/refferred_collection.h"
#include "content/unpack_directory.h"

namespace zelvo {

// Mail names are those without the domain. One is known here as soon as any of the calls with an
// element was made for it.
class DomainMailRefferred : public RefferredCidCollection {
  public:
    using Files = std::vector<std::string>;

    // mailsystem: the element of the domain's mail. mbox: of no effect, each mailbox tells its
    // form. domainName: in UTF-8.
    DomainMailRefferred(const XmlNode& mailsystem, bool mbox, std::string domainName);

    // mailbox: the mailbox's element, whose "@type" tells its form.
    void addMailName(const XmlNode& mailbox, const std::string& mailName);
    // autoresponders: the element of all automatic answers of the mail name.
    void addMailNameResponder(const XmlNode& autoresponders, const std::string& mailName);
    // Notes what an automatic answer sends along, or that a mail name is not known. attaches: paths
    // of files in the content of the automatic answers.
    void addMailNameResponderAttach(const std::string& mailName, const std::string& responder,
                                    const Files& attaches);
    // The same for attachments of no answer: they are put in place with the others, and nothing
    // takes them from there.
    void addMailNameRespondersAttaches(const std::string& mailName, const Files& attaches);
    // spamassassin: the element of the mail name's spam filter.
    void addMailNameSpamassasin(const XmlNode& spamassassin, const std::string& mailName);

  protected:
    void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                      const ContentUnpacker::Paths& includes) override;
    void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    void finishPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    Failure failureOf(const RefferredCid& cid) const override;

  private:
    struct Attachment {
        // The content that holds it; null where its element has none: then any that there is.
        const RefferredCid* content;
        // Empty for none.
        std::string responder;
        std::string file;

        // Whether an answer takes it from this part.
        bool isIn(const Mailbox_Refferred& part) const {
            return !responder.empty() && (content == nullptr || content == &part);
        }
    };
    struct Attachments {
        // Of the element of automatic answers that was met last.
        const RefferredCid* content = nullptr;
        std::vector<Attachment> all;
    };

    // Returns the part, or null when the dump does not have it.
    const RefferredCid* addPart(const XmlNode& node, Mailbox_Refferred::Kind kind,
                                const std::string& mailName);
    // Returns whether the mail name is known.
    bool attach(const std::string& mailName, const std::string& responder, const Files& attaches);

    void extractMailBox(ContentUnpacker& unpacker, const Mailbox_Refferred& part) const;
    // Puts a mail name's attachments where the panel takes them from: in the temporary directory,
    // in one that is this run's own and that goes with the work on them.
    void extractAttachments(ContentUnpacker& unpacker, const Mailbox_Refferred& part) const;
    // The same for attachments in the whole archive, which is unpacked there once for all of them:
    // an unpacker may give all of an archive for the smallest part of it.
    void takeAttachmentsOfWhole(ContentUnpacker& unpacker, const Mailbox_Refferred& part);
    void extractAttachmentsOfWhole(ContentUnpacker& unpacker, const Mailbox_Refferred& part);
    bool hasAttachments(const Mailbox_Refferred& part) const;
    void extractSpamData(ContentUnpacker& unpacker, const Mailbox_Refferred& part) const;
    // Has the panel take the attachments of each answer. A failure costs the one attachment and is
    // told. directory: where the attachments have to be. place: the part's place in it.
    void restoreResponderAttaches(const Mailbox_Refferred& part, const UnpackDirectory& directory,
                                  const std::string& place) const;
    void takeAttachment(const std::string& mailName, const std::string& responder,
                        const std::string& path) const;

    std::string domainName_;
    std::map<std::string, Attachments> attachments_;
    // The attachments in the whole archive, once the first of them was asked for.
    std::unique_ptr<UnpackDirectory> attachmentsOfWhole_;
};

}  // namespace zelvo
