// The scripting settings of a site that stands.
#pragma once

#include "exec/cli_exec.h"
#include "restore/toolbox/command_in_parts.h"
#include "xml/xml_node.h"

namespace zelvo {

// Sends the settings of a `scripting` element in one call. If that is refused, the failure is told
// and each setting goes out by itself; what is refused then is told no more.
// head: the update of the site, which runs only with options behind it. more: what the one call
// says besides; it is lost where that is refused. Raises what making the one call raises.
void updateScripting(const CliExec& head, const XmlNode& scripting, const OptionGroup& more = {});

}  // namespace zelvo
