// The single settings of the panel.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores `server-preferences` and `backup-settings` of the `server` element, each setting by a
// command of its own, whose failure is in the debug log alone.
void deployServerPreferences(const XmlNode& server);

// Restores a `wz-param` of the site wizard. Raises what CliExec::exec raises.
void deployWzParam(const XmlNode& parameter);

}  // namespace zelvo
