// The half of tXmlRmkDocument: the root element and the building of documents.
#include <libxml/tree.h>

#include "commons/errors.h"
#include "xml/xml_document.h"
#include "xml/xml_errors.h"
#include "xml/xml_node.h"
#include "xml/xml_string.h"
#include "xml/xml_text.h"

namespace zelvo {

void tXmlRmkDocument::initNewDoc(const char* rootName) {
    root_ = xmlNewNode(nullptr, BAD_CAST rootName);
    if (root_ == nullptr) {
        throw EXC(tError_XmlInternal) % "#0002: Can not create new node";
    }
    xmlDocSetRootElement(doc(), root_);
}

void tXmlRmkDocument::initFileDoc(const char* rootName) {
    root_ = xmlDocGetRootElement(doc());
    if (root_ == nullptr) {
        throw EXC(tError_EmptyDoc) % rootName;
    }
    if (!stringEq(root_->name, rootName)) {
        throw EXC(tError_WrongDoc) % rootName % toString(root_->name);
    }
}

xmlNode* tXmlRmkDocument::getRootNodeChild(const char* name) const {
    xmlNode* child = getXmlChild(root_, name);
    if (child == nullptr) {
        throw EXC(tError_WrongContent) % (std::string("Can not find '") + name + "' element in '" +
                                          toString(root_->name) + "' element.");
    }
    return child;
}

std::string tXmlRmkDocument::getAttribute(xmlNode* node, const std::string& name) const {
    const XmlCharPtr value(xmlGetProp(node, toXmlChar(name)));
    if (value.get() == nullptr) {
        throw EXC(NoSuchAttribute) % toString(node->name) % name;
    }
    return toString(value.get());
}

std::string tXmlRmkDocument::getNodeText(xmlNode* node) const {
    const XmlCharPtr text(xmlNodeListGetString(doc(), node->children, 1));
    // A null text makes the string raise std::logic_error.
    return std::string(reinterpret_cast<const char*>(text.get()));
}

void tXmlRmkDocument::addAttribute(xmlNode* node, const std::string& name,
                                   const std::string& value) {
    xmlSetProp(node, toXmlChar(name), toXmlChar(toXmlText(value)));
}

xmlNode* tXmlRmkDocument::newTextChild(xmlNode* parent, const std::string& name,
                                       const std::string& text) {
    return xmlNewTextChild(parent, nullptr, toXmlChar(name), toXmlChar(toXmlText(text)));
}

xmlNode* tXmlRmkDocument::newChild(xmlNode* parent, const std::string& name) {
    return xmlAddChild(parent, xmlNewDocNode(doc(), nullptr, toXmlChar(name), nullptr));
}

void tXmlRmkDocument::removeNode(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

void tXmlRmkDocument::removeChildren(xmlNode* parent) {
    while (parent->children != nullptr) {
        removeNode(parent->children);
    }
}

bool tXmlRmkDocument::stringEq(const xmlChar* left, const std::string& right) {
    return xmlStrcmp(left, toXmlChar(right)) == 0;
}

}  // namespace zelvo
