// The templates and skeletons that belong to the administrator.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Each restores what a `server` element holds of its kind, in document order. The failure of one
// template is told, and the next one follows; that there was one, a last line of the debug log
// says.
void deployServerDomainTemplates(const XmlNode& server);
void deployServerClientTemplates(const XmlNode& server);
void deployServerResellerTemplates(const XmlNode& server);

// Hands the skeletons of the server to the panel; each failure is told.
void deployServerSkeletons(const XmlNode& server);

}  // namespace zelvo
