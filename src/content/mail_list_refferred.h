// The archives of a domain's mail lists.
#pragma once

#include <string>

#include "content/mailbox_refferred.h"
#include "content/refferred_collection.h"

namespace zelvo {

class DomainMailListRefferred : public RefferredCidCollection {
  public:
    // maillists: the element of the domain's lists. domainName: in UTF-8.
    DomainMailListRefferred(const XmlNode& maillists, std::string domainName);

    // node: the list's element.
    void addMailList(const XmlNode& node, const std::string& name);

  protected:
    void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                      const ContentUnpacker::Paths& includes) override;
    void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    // Nothing is rebuilt when the whole archive is not there.
    void finishPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    Failure failureOf(const RefferredCid& cid) const override;

  private:
    std::string domainName_;
    bool isWholeUnpacked_ = false;
};

}  // namespace zelvo
