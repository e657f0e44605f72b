// The server's vault of site applications among its settings.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores each `application-vault` of the server. The failures are told one by one; returns
// whether there was none.
bool deployServerApplicationVault(const XmlNode& server);

}  // namespace zelvo
