// What a site may take of the web server.
#pragma once

#include "exec/cli_exec.h"
#include "xml/xml_node.h"

namespace zelvo {

// Sends the limits of connections and bandwidth below the `preferences` of a site, if it has any; a
// failure is told. head: the update of the site.
void updatePerformance(const CliExec& head, const XmlNode& site);

}  // namespace zelvo
