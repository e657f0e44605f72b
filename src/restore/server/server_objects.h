// What the server has of the objects that accounts and domains have too.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// These take the `server` element. The failure of one object is told and costs no other; the
// first two return whether all went through.

// Each `certificates/certificate`, into the server's own repository.
bool deployServerCertificates(const XmlNode& server);

// Each `interface-preferences/custom-button`, as the administrator's.
bool deployServerCustomButtons(const XmlNode& server);

// The certificates that the addresses show: all give theirs back, and then each
// `properties/system-ip` gets its own. The failure of one is told.
void deployAddressCertificates(const XmlNode& server);

}  // namespace zelvo
