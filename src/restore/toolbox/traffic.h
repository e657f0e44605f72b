// The traffic history of accounts and domains.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// Hands the rows of a `traffic` element, which only the panel reads, to "traffic WORD NAME" on its
// standard input. Raises what CliExec::exec raises.
void loadTraffic(const std::string& word, const std::string& name, const XmlNode& traffic);

}  // namespace zelvo
