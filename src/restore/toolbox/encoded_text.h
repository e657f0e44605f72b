// Texts that a dump may hold in base64 (RFC 4648).
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The text that base64 stands for. Raises UnsafeText for one with a NUL: utilities get their texts
// as arguments and variables, which end there. what: whose text it is, for the message.
std::string textOfBase64(const std::string& base64, const std::string& what);

// The text of an element such as `pinfo`, decoded where its @encoded is "true". Raises
// UnsafeText.
std::string encodedText(const XmlNode& element);

}  // namespace zelvo
