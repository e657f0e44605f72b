#include "xml/subtree.h"

#include <libxml/xmlsave.h>

#include <memory>

#include "xml/xml_errors.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

constexpr int kLayout = XML_SAVE_FORMAT | XML_SAVE_NO_DECL;

struct FreeBuffer {
    void operator()(xmlBuffer* buffer) const { xmlBufferFree(buffer); }
};

// Every failure of the library is a lack of memory here.
bool save(const XmlNode& node, xmlBuffer* buffer) {
    xmlSaveCtxt* const context =
        buffer == nullptr ? nullptr : xmlSaveToBuffer(buffer, nullptr, kLayout);
    if (context == nullptr) {
        return false;
    }
    const bool isSaved = xmlSaveTree(context, node.node()) >= 0 && xmlSaveFlush(context) >= 0;
    return xmlSaveClose(context) >= 0 && isSaved;
}

}  // namespace

std::string subtreeText(const XmlNode& node) {
    const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
    if (!save(node, buffer.get())) {
        throw EXC(tError_SaveFile) % "in-memory buffer";
    }
    return toString(xmlBufferContent(buffer.get()));
}

}  // namespace zelvo
