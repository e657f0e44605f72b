// A part of the mail of a domain: of one of its mail names or mail lists.
#pragma once

#include <string>

#include "content/cid.h"

namespace zelvo {

class Mailbox_Refferred : public RefferredCid {
  public:
    enum class Kind {
        kMaildir,
        // Mailboxes in mbox form.
        kMbox,
        // The inbox that belongs to these: one file.
        kInbox,
        // Of automatic answers.
        kAttachments,
        // The data of the spam filter.
        kSpamData,
        kListArchive,
    };

    // node: the object's element. name: of the mail name, without the domain, or of the list.
    Mailbox_Refferred(const XmlNode& node, Kind contentKind, std::string name);

    // Rebuilds the archive pages of the list. domain: of no effect, lists are known by their names.
    // Raises ExecCmd::Failed, UnsafeName for a name that would be taken for an option, and
    // UnExpectedResult for links by which the list's files would be read or written elsewhere.
    void updateMailList(const std::string& domain) const;

    Kind kind;
    std::string mailName;
};

// Returns a name of a dump that is a domain's, a mail name's or a list's, if it can be one
// component of a path and no program takes it for an option. Raises UnsafeName. what: as in
// requireComponent.
const std::string& requireMailPart(const std::string& name, const std::string& what);

}  // namespace zelvo
