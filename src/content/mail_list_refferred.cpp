#include "content/mail_list_refferred.h"

#include <utility>

#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/destination.h"
#include "content/mail_list_archive.h"
#include "report/guard.h"
#include "xml/xml_node.h"

namespace zelvo {

namespace {

const Mailbox_Refferred& listOf(const RefferredCid& cid) {
    return static_cast<const Mailbox_Refferred&>(cid);
}

// other: empty for none.
void requireNoOther(const std::string& other, const std::string& owner) {
    if (!other.empty()) {
        throw EXC(UnsafeName) % other % ("a directory of " + owner) % "it is another's";
    }
}

}  // namespace

DomainMailListRefferred::DomainMailListRefferred(const XmlNode& maillists, std::string domainName)
    : RefferredCidCollection(
          maillists, "domainmaillist",
          {"Going to unpack maillists", "Going to unpack domain maillists with estored objects",
           "Finished unpacking the maillistes"}),
      domainName_(std::move(domainName)) {
    for (XmlNodeIterator list = maillists.iterate("maillist"); !list.atEnd(); ++list) {
        named_.insert((*list).str("@name"));
    }
}

void DomainMailListRefferred::addMailList(const XmlNode& node, const std::string& name) {
    using Kind = Mailbox_Refferred::Kind;
    // The archive of another one is told as refused where it is unpacked.
    silenced([&] { restored_.insert(requireMailPart(name, "a mail list")); });
    addToExtract(std::make_unique<Mailbox_Refferred>(node, Kind::kListArchive, name));
}

void DomainMailListRefferred::extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                                           const ContentUnpacker::Paths& includes) {
    const std::string other = unpackListArchives(unpacker, whole, includes, restored_, named_);
    isWholeUnpacked_ = true;
    requireNoOther(other, "the mail lists of " + domainName_);
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
    requireNoOther(other, "the mail list " + name);
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
