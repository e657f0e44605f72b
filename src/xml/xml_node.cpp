#include "xml/xml_node.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include "commons/errors.h"
#include "xml/xml_errors.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

bool isEmptySet(const xmlNodeSet* nodes) { return nodes == nullptr || nodes->nodeNr == 0; }

}  // namespace

XmlNodeIterator::XmlNodeIterator(const tXPathExpr& expr)
    : doc_(expr.doc()),
      nodes_(expr.getNodeSet()),
      object_(expr.result()),
      position_(isEmptySet(nodes_) ? -1 : 0) {}

XmlNode XmlNodeIterator::operator*() const { return {doc_, nodes_->nodeTab[position_]}; }

XmlNodeIterator& XmlNodeIterator::operator++() {
    ++position_;
    if (position_ >= nodes_->nodeNr) {
        position_ = -1;
    }
    return *this;
}

bool XmlNode::test(const std::string& expr) const { return testXPathExpr(doc_, expr, node_); }

std::string XmlNode::str(const std::string& expr) const {
    return tXPathExpr(doc_, expr, node_).str();
}

XmlNode XmlNode::getNode(const std::string& expr) const {
    const tXPathExpr result(doc_, expr, node_);
    if (!result.test()) {
        throw EXC(tError_XPath_CantEvaluate) % result.missingNodeText();
    }
    return result.getXmlNode();
}

XmlNode XmlNode::getParent() const {
    if (node_->parent == nullptr) {
        throw EXC(NoParentNode);
    }
    return {doc_, node_->parent};
}

XmlNodeIterator XmlNode::iterate(const std::string& expr) const {
    return XmlNodeIterator(tXPathExpr(doc_, expr, node_));
}

int foreach_xmlnode(const tXPathExpr& expr, const tXmlOperator& op, XmlErrorFunc errorFunc) {
    const xmlNodeSet* nodes = expr.getNodeSet();
    if (nodes == nullptr) {
        errorFunc(EXC(tError_XmlInternal) % ("Can not evaluate XPath expression: " + expr.text()));
        return 0;
    }
    for (int index = 0, count = nodes->nodeNr; index < count; ++index) {
        try {
            op.act(nodes->nodeTab[index]);
        } catch (const ExTraceable& failure) {
            errorFunc(failure);
        }
    }
    return 1;
}

xmlNode* getXmlChild(const xmlNode* node, const std::string& name) {
    if (node == nullptr) {
        throw EXC(AssertionFailed) % "node != NULL";
    }
    xmlNode* child = node->children;
    while (child != nullptr && xmlStrcmp(child->name, toXmlChar(name)) != 0) {
        child = child->next;
    }
    return child;
}

bool is_xml_attr_set(const XmlCharPtr& value) {
    return value.get() != nullptr && *value.get() != 0;
}

}  // namespace zelvo
