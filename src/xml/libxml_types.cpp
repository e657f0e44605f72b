#include "xml/libxml_types.h"

#include <libxml/globals.h>

namespace zelvo {

void rmkFreeXmlChar(xmlChar* text) { xmlFree(text); }

}  // namespace zelvo
