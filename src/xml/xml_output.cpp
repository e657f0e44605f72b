#include "xml/xml_output.h"

#include <libxml/uri.h>
#include <libxml/xmlerror.h>

namespace zelvo {

namespace {

std::string escapePercent(const std::string& name) {
    std::string escaped;
    for (const char c : name) {
        c == '%' ? escaped += "%25" : escaped += c;
    }
    return escaped;
}

}  // namespace

std::string outputName(const std::string& fileName) {
    const std::string escaped = escapePercent(fileName);
    xmlURI* uri = xmlParseURI(escaped.c_str());
    const bool isTakenForUri = uri != nullptr;
    xmlFreeURI(uri);
    return isTakenForUri ? escaped : fileName;
}

OutputCheck::OutputCheck() { xmlResetLastError(); }

bool OutputCheck::isWritten(int result) const {
    const xmlError* error = xmlGetLastError();
    return result >= 0 && (error == nullptr || error->domain != XML_FROM_IO);
}

}  // namespace zelvo
