// The settings of the mail server.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores the `mail-settings` element, each setting by a command of its own. A refused command is
// in the debug log alone, and a list or a word that the utility would take for an option is told;
// both cost nothing else. Raises what CliExec::exec raises for the signing of outgoing mail, which
// costs the settings behind it.
void deployServerMail(const XmlNode& settings);

// Sets the server's virus filter, the `virusfilter` element of `server` or of its `mail-settings`.
// A failure is in the debug log alone.
void deployServerVirusfilter(const XmlNode& server);

}  // namespace zelvo
