// One element of a document as a text of its own.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The element with all that is below it: indented where no text stands between the elements,
// without an XML declaration, and in ASCII, other characters as references. Raises tError_SaveFile,
// about "in-memory buffer", when memory runs out.
std::string subtreeText(const XmlNode& node);

}  // namespace zelvo
