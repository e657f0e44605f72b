// Handles on elements of a document, and the walks over the nodes that an expression finds. A
// failure at one node of a walk does not stop the walk, unless the error function raises.
#pragma once

#include <string>

#include "commons/exception.h"
#include "xml/xpath.h"

namespace zelvo {

class XmlNode;

// What a walk does with the failure of one node: it logs and returns, and the walk goes on with
// the next node, or it raises, and the walk ends.
using XmlErrorFunc = void (*)(const ExTraceable&);

// A position in the nodes that an expression found, in document order. Keeps the result alive, not
// the document.
class XmlNodeIterator {
  public:
    // Stands on the first node of the result. Raises tError_XPath_TypesMismatch if the result is
    // no node set.
    explicit XmlNodeIterator(const tXPathExpr& expr);

    // True behind the last node; a missing or empty set is at its end from the start.
    bool atEnd() const { return position_ < 0; }
    // The node at this position, which must not be the end.
    XmlNode operator*() const;
    XmlNodeIterator& operator++();

  private:
    xmlDoc* doc_;
    xmlNodeSet* nodes_;
    XPathObjectPtr object_;
    int position_;
};

// A handle on an element: a value of two pointers that owns nothing and is good as long as the
// document.
class XmlNode {
  public:
    XmlNode(xmlDoc* doc, xmlNode* node) : doc_(doc), node_(node) {}

    xmlDoc* doc() const { return doc_; }
    xmlNode* node() const { return node_; }

    // The expression, evaluated at this element, cast to a bool: a node set is true if it holds a
    // node, a number if it is not 0, a string if it is not empty. Raises tError_XPath_CantEvaluate
    // for an expression that is not XPath, as all queries here do.
    bool test(const std::string& expr) const;

    // The expression, evaluated at this element, cast to a string: of a node set the text of the
    // first node, empty if there is none.
    std::string str(const std::string& expr) const;

    // The first node that the expression finds. Raises tError_XPath_CantEvaluate if the expression
    // casts to false, and tError_XPath_TypesMismatch if it gives something else than nodes.
    XmlNode getNode(const std::string& expr) const;

    // The parent; of the root element that is the document's own node. Raises NoParentNode if
    // there is none.
    XmlNode getParent() const;

    // The nodes that the expression finds. Raises tError_XPath_TypesMismatch if it gives
    // something else than nodes.
    XmlNodeIterator iterate(const std::string& expr) const;

    // Calls op with an XmlNode for each node that the expression finds, in document order. An
    // ExTraceable that leaves op goes to errorFunc; any other exception ends the walk and passes
    // on. No nodes, no calls. Raises what iterate raises.
    template <class Op>
    void foreach (const std::string& expr, Op && op, XmlErrorFunc errorFunc) const {
        for (XmlNodeIterator it = iterate(expr); !it.atEnd(); ++it) {
            try {
                op(*it);
            } catch (const ExTraceable& failure) {
                errorFunc(failure);
            }
        }
    }

  private:
    xmlDoc* doc_;
    xmlNode* node_;
};

// Something to be done with each node of a walk.
class tXmlOperator {
  public:
    virtual ~tXmlOperator() = default;

    virtual void act(xmlNode* node) const = 0;
};

// Calls op for each node of the result, in document order; failures go the same ways as in
// XmlNode::foreach. Gives 1, and 1 for an empty set too. A null set is handed to errorFunc as
// tError_XmlInternal and gives 0. Raises tError_XPath_TypesMismatch if the result is no node set.
int foreach_xmlnode(const tXPathExpr& expr, const tXmlOperator& op, XmlErrorFunc errorFunc);

// The first direct child with this name, of whatever type, or null. Raises AssertionFailed for a
// null node.
xmlNode* getXmlChild(const xmlNode* node, const std::string& name);

// True if there is a value and it is not empty.
bool is_xml_attr_set(const XmlCharPtr& value);

}  // namespace zelvo
