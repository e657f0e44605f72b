// Which controls the panel's pages show.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores an `interface-preferences/controls-visibility` element. Raises what CliExec::exec
// raises.
void deployServerControlsVisibility(const XmlNode& node);

}  // namespace zelvo
