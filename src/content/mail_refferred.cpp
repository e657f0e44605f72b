#include "content/mail_refferred.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

#include "commons/files.h"
#include "content/accounts.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/destination.h"
#include "content/unsafe_name.h"
#include "exec/beneath.h"
#include "exec/cli_exec.h"
#include "report/debug_log.h"

namespace zelvo {

using Kind = Mailbox_Refferred::Kind;

namespace {

const Mailbox_Refferred& partOf(const RefferredCid& cid) {
    return static_cast<const Mailbox_Refferred&>(cid);
}

// The line of the debug log about a mailbox that is put into its maildir.
std::string announcement(const Mailbox_Refferred& part) {
    const std::string what = "(" + part.str() + ")";
    switch (part.kind) {
        case Kind::kMbox:
            return "Converting the Mbox-formatted mail of " + part.mailName + " " + what;
        case Kind::kInbox:
            return "Converting the Mbox-formatted INBOX of " + part.mailName + what;
        default:
            return "Extracting the mailbox of " + part.mailName + " " + what;
    }
}

// The path of one attachment below a part's place in a directory. The panel reads it as root and
// mails it out, and takes a list of paths with commas, behind which a semicolon begins another.
std::string pathOfAttachment(const UnpackDirectory& directory, const std::string& place,
                             const std::string& file) {
    requireDescent(file, "an attachment");
    std::string path = place + "/" + file;
    // The mail name and the part's place in the archive are the dump's words as well.
    if (path.find_first_of(",;", directory.path().size()) != std::string::npos) {
        throw EXC(UnsafeName) % path % "an attachment" % "it would be taken for a list";
    }
    if (typeBeneath(directory.path(), path) != S_IFREG) {
        throw EXC(UnExpectedResult) % (path + " is no file");
    }
    return path;
}

}  // namespace

DomainMailRefferred::DomainMailRefferred(const XmlNode& mailsystem, bool /*mbox*/,
                                         std::string domainName)
    : RefferredCidCollection(mailsystem, "domainmail",
                             {"Going to unpack mailboxes",
                              "Going to unpack domain maill contect with restored objects",
                              "Finished unpacking the mailboxes"}),
      domainName_(std::move(domainName)) {}

void DomainMailRefferred::addMailName(const XmlNode& mailbox, const std::string& mailName) {
    addPart(mailbox, mailbox.str("@type") == "mbox" ? Kind::kMbox : Kind::kMaildir, mailName);
    addPart(mailbox, Kind::kInbox, mailName);
}

void DomainMailRefferred::addMailNameResponder(const XmlNode& autoresponders,
                                               const std::string& mailName) {
    const RefferredCid* content = addPart(autoresponders, Kind::kAttachments, mailName);
    attachments_[mailName].content = content;
}

void DomainMailRefferred::addMailNameSpamassasin(const XmlNode& spamassassin,
                                                 const std::string& mailName) {
    addPart(spamassassin, Kind::kSpamData, mailName);
}

const RefferredCid* DomainMailRefferred::addPart(const XmlNode& node, Kind kind,
                                                 const std::string& mailName) {
    attachments_.try_emplace(mailName);
    auto part = std::make_unique<Mailbox_Refferred>(node, kind, mailName);
    const RefferredCid* const kept = part->type.empty() ? nullptr : part.get();
    addToExtract(std::move(part));
    return kept;
}

void DomainMailRefferred::addMailNameResponderAttach(const std::string& mailName,
                                                     const std::string& responder,
                                                     const Files& attaches) {
    if (!attach(mailName, responder, attaches)) {
        theDebugLog->log("Cannot add autoresponder '" + responder + "' attach for mailname '" +
                         mailName + "'. Mail name not found!");
    }
}

void DomainMailRefferred::addMailNameRespondersAttaches(const std::string& mailName,
                                                        const Files& attaches) {
    if (!attach(mailName, "", attaches)) {
        theDebugLog->log("Cannot add autoresponders attaches for mailname '" + mailName +
                         "'. Mail name not found!");
    }
}

bool DomainMailRefferred::attach(const std::string& mailName, const std::string& responder,
                                 const Files& attaches) {
    const auto known = attachments_.find(mailName);
    if (known == attachments_.end()) {
        return false;
    }
    for (const std::string& file : attaches) {
        known->second.all.push_back({known->second.content, responder, file});
    }
    theDebugLog->log("Add responder '" + responder + "' attach for mailname " + mailName);
    return true;
}

void DomainMailRefferred::extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                                       const ContentUnpacker::Paths& includes) {
    requireUnpacked(
        unpacker.extractDomainMail(whole, requireMailPart(domainName_, "a domain"), includes));
}

void DomainMailRefferred::extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) {
    const Mailbox_Refferred& part = partOf(cid);
    requireMailPart(domainName_, "a domain");
    requireMailPart(part.mailName, "a mail name");
    switch (part.kind) {
        case Kind::kAttachments:
            return extractAttachments(unpacker, part);
        case Kind::kSpamData:
            return extractSpamData(unpacker, part);
        default:
            return extractMailBox(unpacker, part);
    }
}

// What the whole archive holds of a mail name lies in the domain's mail directory now. A mailbox in
// mbox form still has to be converted. Attachments are not taken from there: beside them lies mail
// that this server had before.
void DomainMailRefferred::finishPart(ContentUnpacker& unpacker, const RefferredCid& cid) {
    const Mailbox_Refferred& part = partOf(cid);
    if (part.kind == Kind::kAttachments) {
        takeAttachmentsOfWhole(unpacker, part);
    } else if (part.kind == Kind::kMbox || part.kind == Kind::kInbox) {
        theDebugLog->log(announcement(part));
        ContentUnpacker::convertUnpackedMbox(requireMailPart(domainName_, "a domain"),
                                             requireMailPart(part.mailName, "a mail name"),
                                             part.offset);
    }
}

RefferredCidCollection::Failure DomainMailRefferred::failureOf(const RefferredCid& cid) const {
    const Mailbox_Refferred& part = partOf(cid);
    switch (part.kind) {
        case Kind::kAttachments:
            return std::make_unique<Exc<&CantUnpackAttachments>>(EXC(CantUnpackAttachments) %
                                                                 part.mailName % domainName_);
        case Kind::kSpamData:
            return std::make_unique<Exc<&CantUnpackSpamassassin>>(EXC(CantUnpackSpamassassin) %
                                                                  part.mailName % domainName_);
        default:
            return std::make_unique<Exc<&CantUnpackMailboxContent>>(EXC(CantUnpackMailboxContent) %
                                                                    part.mailName % domainName_);
    }
}

void DomainMailRefferred::extractMailBox(ContentUnpacker& unpacker,
                                         const Mailbox_Refferred& part) const {
    theDebugLog->log(announcement(part));
    if (part.kind == Kind::kMaildir) {
        requireUnpackedBelow(getDomainMailDir(domainName_), getMaildir(domainName_, part.mailName),
                             part.offset);
        unpacker.mdir2mdir(part, domainName_, part.mailName, part.offset);
    } else {
        unpacker.mbox2mdir(part, domainName_, part.mailName, part.kind == Kind::kInbox,
                           part.offset);
    }
}

void DomainMailRefferred::extractAttachments(ContentUnpacker& unpacker,
                                             const Mailbox_Refferred& part) const {
    theDebugLog->log("Extract autoresponders attaches of " + part.mailName + "(" + part.str() +
                     ")");
    const UnpackDirectory directory(files::getTmpDir());
    directory.openToPanel();
    const std::string destination = directory.path() + "/" + part.mailName;
    requireUnpackedBelow(directory.path(), destination, part.offset);
    requireUnpacked(unpacker.extractAutoResponder(
        part, directory.path().substr(files::getTmpDir().size() + 1), part.mailName, part.offset));
    restoreResponderAttaches(part, directory, placeOfPart(destination, part.offset));
}

void DomainMailRefferred::takeAttachmentsOfWhole(ContentUnpacker& unpacker,
                                                 const Mailbox_Refferred& part) {
    requireMailPart(domainName_, "a domain");
    requireMailPart(part.mailName, "a mail name");
    if (!hasAttachments(part)) {
        return;
    }
    if (attachmentsOfWhole_ == nullptr) {
        extractAttachmentsOfWhole(unpacker, part);
    }
    restoreResponderAttaches(part, *attachmentsOfWhole_,
                             placeOfPart(attachmentsOfWhole_->path(), part.offset));
}

void DomainMailRefferred::extractAttachmentsOfWhole(ContentUnpacker& unpacker,
                                                    const Mailbox_Refferred& part) {
    ContentUnpacker::Paths members;
    for (const RefferredCid* cid : taken()) {
        if (partOf(*cid).kind == Kind::kAttachments) {
            members.push_back(cid->offset);
        }
    }
    if (std::find(members.begin(), members.end(), "") != members.end()) {
        members.clear();
    }
    // It stays also when this fails, so that nobody tries again.
    attachmentsOfWhole_ = std::make_unique<UnpackDirectory>(files::getTmpDir());
    attachmentsOfWhole_->openToPanel();
    requireUnpacked(unpacker.untar(part, attachmentsOfWhole_->path(), members, accounts::kPanel,
                                   accounts::kPanel, 0));
}

bool DomainMailRefferred::hasAttachments(const Mailbox_Refferred& part) const {
    const std::vector<Attachment>& all = attachments_.at(part.mailName).all;
    return std::any_of(all.begin(), all.end(),
                       [&part](const Attachment& one) { return one.isIn(part); });
}

void DomainMailRefferred::extractSpamData(ContentUnpacker& unpacker,
                                          const Mailbox_Refferred& part) const {
    // Once the converter has refused, it would refuse for every mail name of the run.
    static bool convert = true;
    requireUnpackedBelow(getDomainMailDir(domainName_), getSpamDir(domainName_, part.mailName),
                         part.offset);
    requireUnpacked(unpacker.extractSpamAssassinContent(part, domainName_, part.mailName, convert,
                                                        part.offset));
}

void DomainMailRefferred::restoreResponderAttaches(const Mailbox_Refferred& part,
                                                   const UnpackDirectory& directory,
                                                   const std::string& place) const {
    theDebugLog->log("Create autoresponders attaches files of " + part.mailName + "@" +
                     domainName_ + "(" + part.str() + ")");
    for (const Attachment& attachment : attachments_.at(part.mailName).all) {
        if (attachment.isIn(part)) {
            const Failure failure = failureOf(part);
            contentGuarded(*failure, [&] {
                takeAttachment(part.mailName, attachment.responder,
                               pathOfAttachment(directory, place, attachment.file));
            });
        }
    }
}

void DomainMailRefferred::takeAttachment(const std::string& mailName, const std::string& responder,
                                         const std::string& path) const {
    CliExec cmd(files::getDirectCliUtilityPath("autoresponder"));
    cmd << "-u" << requireNoOption(responder, "an autoresponder") << "-mail"
        << mailName + "@" + domainName_ << "-attach"
        << "add:" + path;
    cmd.exec();
}

}  // namespace zelvo
