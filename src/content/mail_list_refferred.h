// The archives of a domain's mail lists.
#pragma once

#include <set>
#include <string>

#include "content/mailbox_refferred.h"
#include "content/refferred_collection.h"

namespace zelvo {

class DomainMailListRefferred : public RefferredCidCollection {
  public:
    // maillists: the element of the domain's lists. domainName: in UTF-8.
    DomainMailListRefferred(const XmlNode& maillists, std::string domainName);

    // Notes a list that was made. node: the list's element.
    void addMailList(const XmlNode& node, const std::string& name);

  protected:
    // Takes of the archive the lists that were made. Raises UnsafeName for a name in it that is
    // none of the domain's, when these are in their places.
    void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                      const ContentUnpacker::Paths& includes) override;
    void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    // Nothing is rebuilt when the whole archive is not there.
    void finishPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    Failure failureOf(const RefferredCid& cid) const override;

  private:
    std::string domainName_;
    // What the domain has, and what of it was made: the name of a list that was not may be that of
    // another domain's.
    std::set<std::string> named_;
    std::set<std::string> restored_;
    bool isWholeUnpacked_ = false;
};

}  // namespace zelvo
