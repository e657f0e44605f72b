// The settings of the name server.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Restores the `dns-settings` element: the records of the zone that new domains get, then the
// settings of the server. Raises what DnsRecordDeployer::deployRecords raises, and what
// CliExec::exec raises; whatever is raised costs what stands behind it. A refused recursion or
// status is in the debug log alone.
void deployServerDns(const XmlNode& settings);

}  // namespace zelvo
