// Texts that a dump may hold in base64 (RFC 4648).
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The text of an element such as `pinfo`, decoded where its @encoded is "true".
std::string encodedText(const XmlNode& element);

}  // namespace zelvo
