#include "content/mail_list_refferred.h"

#include <utility>

#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/destination.h"
#include "content/mail_list_archive.h"

namespace zelvo {

namespace {

const Mailbox_Refferred& listOf(const RefferredCid& cid) {
    return static_cast<const Mailbox_Refferred&>(cid);
}

}  // namespace

DomainMailListRefferred::DomainMailListRefferred(const XmlNode& maillists, std::string domainName)
    : RefferredCidCollection(
          maillists, "domainmaillist",
          {"Going to unpack maillists", "Going to unpack domain maillists with estored objects",
           "Finished unpacking the maillistes"}),
      domainName_(std::move(domainName)) {}

void DomainMailListRefferred::addMailList(const XmlNode& node, const std::string& name) {
    using Kind = Mailbox_Refferred::Kind;
    addToExtract(std::make_unique<Mailbox_Refferred>(node, Kind::kListArchive, name));
}

void DomainMailListRefferred::extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                                           const ContentUnpacker::Paths& includes) {
    requireUnpacked(unpacker.extractDomainMailList(whole, domainName_, includes));
    isWholeUnpacked_ = true;
}

void DomainMailListRefferred::extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) {
    const Mailbox_Refferred& list = listOf(cid);
    const std::string& name = requireMailPart(list.mailName, "a mail list");
    requireUnpackedBelow(getListArchivesDir(), getListMboxDir(name), list.offset);
    if (!isUnpackedBesideOthers(name, list.offset)) {
        requireUnpacked(unpacker.extractMailManContent(list, domainName_, name, list.offset));
        return list.updateMailList(domainName_);
    }
    const std::string other = unpackListArchive(unpacker, list, name, list.offset);
    list.updateMailList(domainName_);
    if (!other.empty()) {
        throw EXC(UnsafeName) % other % ("a directory of the mail list " + name) %
            "it is no directory of its own";
    }
}

void DomainMailListRefferred::finishPart(ContentUnpacker& /*unpacker*/, const RefferredCid& cid) {
    if (isWholeUnpacked_) {
        listOf(cid).updateMailList(domainName_);
    }
}

RefferredCidCollection::Failure DomainMailListRefferred::failureOf(const RefferredCid& cid) const {
    using Lost = Exc<&CantUnpackMailboxContent>;
    return std::make_unique<Lost>(EXC(CantUnpackMailboxContent) % listOf(cid).mailName %
                                  domainName_);
}

}  // namespace zelvo
