#include "restore/zelvo_dump.h"

#include "xml/xpath.h"

namespace zelvo {

int tXmlZelvoDump::getDomainsNum() const {
    return static_cast<int>(tXPathExpr(doc(), "count(//domain)", nullptr).number());
}

int tXmlZelvoDump::getAccountsNum() const {
    return static_cast<int>(
        tXPathExpr(doc(), "count(//client)+count(//reseller)", nullptr).number());
}

}  // namespace zelvo
