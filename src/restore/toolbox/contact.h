// Contact data: the `pinfo` elements of accounts and of domain administrators.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The text of a `pinfo` element, decoded from base64 (RFC 4648) where @encoded is "true".
std::string contactText(const XmlNode& pinfo);

}  // namespace zelvo
