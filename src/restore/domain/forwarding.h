// Domains whose web address leads to another site.
#pragma once

#include "restore/toolbox/domain_info.h"
#include "xml/xml_node.h"

namespace zelvo {

// Both send visitors to the address (URL) that is the text of the element: by an answer of the web
// server, or in a frame. domain: the address of its hosting goes out even if it is empty. Raise
// AssertionFailed for an element without text, UnsafeName and ExecCmd::Failed.
void deploy_shosting(const XmlNode& shosting, const DomainInfo& domain);
void deploy_fhosting(const XmlNode& fhosting, const DomainInfo& domain);

}  // namespace zelvo
