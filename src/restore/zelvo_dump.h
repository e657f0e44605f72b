// The canonical dump as a document.
#pragma once

#include "xml/xml_document.h"

namespace zelvo {

// A dump file, with the counts that the progress report starts from.
class tXmlZelvoDump : public tXmlRmkDocument {
  public:
    // Reads the file; raises what tXmlDocument raises.
    using tXmlRmkDocument::tXmlRmkDocument;

    // The number of domains in the whole dump.
    int getDomainsNum() const;
    // The number of clients and resellers in the whole dump.
    int getAccountsNum() const;
};

}  // namespace zelvo
