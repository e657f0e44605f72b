// The templates and skeletons that belong to the administrator.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Each restores what a `server` element holds of its kind, in document order. A failure is told,
// and the next one follows. They return whether all went through.
bool deployServerDomainTemplates(const XmlNode& server);
bool deployServerClientTemplates(const XmlNode& server);
bool deployServerResellerTemplates(const XmlNode& server);
bool deployServerSkeletons(const XmlNode& server);

}  // namespace zelvo
