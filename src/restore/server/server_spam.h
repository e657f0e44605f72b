// Grey listing and the spam filter of the server.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores `grey-listing`, on a panel that has it, and then `spamassassin` of the `server` element.
// Raises what CliExec::exec raises; a failure of the first costs the second.
void deploySpamSettings(const XmlNode& server);

}  // namespace zelvo
