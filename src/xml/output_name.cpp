#include "xml/output_name.h"

#include <libxml/uri.h>

namespace zelvo {

namespace {

std::string escapePercent(const std::string& name) {
    std::string escaped;
    for (const char c : name) {
        if (c == '%') {
            escaped += "%25";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

}  // namespace

std::string outputName(const std::string& fileName) {
    std::string escaped = escapePercent(fileName);
    xmlURI* uri = xmlParseURI(escaped.c_str());
    const bool isTakenForUri = uri != nullptr;
    xmlFreeURI(uri);
    return isTakenForUri ? escaped : fileName;
}

}  // namespace zelvo
