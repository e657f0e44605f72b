#include "content/mailbox_refferred.h"

#include <utility>

#include "commons/files.h"
#include "content/destination.h"
#include "content/unsafe_name.h"
#include "exec/beneath.h"
#include "exec/log_exec_cmd.h"

namespace zelvo {

namespace {

const char* typeOf(Mailbox_Refferred::Kind kind) {
    using Kind = Mailbox_Refferred::Kind;
    switch (kind) {
        case Kind::kInbox:
            return "mailbox_inbox";
        case Kind::kAttachments:
            return "attaches";
        case Kind::kSpamData:
            return "spam-assasin";
        case Kind::kMaildir:
        case Kind::kMbox:
        case Kind::kListArchive:
            break;
    }
    return "mailbox";
}

}  // namespace

Mailbox_Refferred::Mailbox_Refferred(const XmlNode& node, Kind contentKind, std::string name)
    : RefferredCid(node, typeOf(contentKind)), kind(contentKind), mailName(std::move(name)) {}

void Mailbox_Refferred::updateMailList(const std::string& /*domain*/) const {
    const std::string& name = requireMailPart(mailName, "a mail list");
    // It reads the one and writes the other with root's rights, and can have no fence around them:
    // the list server's locks, logs and settings, which it needs, lie elsewhere. Pages may be links
    // to each other.
    refuseLinks(getListMboxDir(name));
    refuseLinksOut(getListArchivesDir() + name);
    tLogExecCmd arch(files::getMailmanArchFileName());
    arch << name;
    arch.exec();
}

const std::string& requireMailPart(const std::string& name, const std::string& what) {
    return requireNoOption(requireComponent(name, what), what);
}

}  // namespace zelvo
