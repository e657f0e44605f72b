// Evaluated XPath expressions over a document.
#pragma once

#include <string>

#include "xml/pointer.h"

namespace zelvo {

class XmlNode;

// An XPath expression with its result. Copies share the result; its nodes are good as long as one
// of the copies and the document live.
class tXPathExpr {
  public:
    // Evaluates the expression at once. No namespace prefixes are known. doc: the document, which
    // must outlive the object. contextNode: the node that relative paths start from; null means
    // the document. Raises tError_XPath_CantEvaluate for an expression that is not XPath.
    tXPathExpr(xmlDoc* doc, const std::string& expr, xmlNode* contextNode);

    // The nodes of the result in document order, owned by this object; may be null. Raises
    // tError_XPath_TypesMismatch if the result is a string, a number or a bool.
    xmlNodeSet* getNodeSet() const;

    // The first node in document order. Raises tError_XPath_CantEvaluate if there is none, and
    // what getNodeSet raises.
    xmlNode* getNode() const;

    // The same node as a handle.
    XmlNode getXmlNode() const;

    // The result cast to a string, as the XPath function string() does.
    std::string str() const;

    // The result cast to a number, as the XPath function number() does; not a number gives NaN.
    double number() const;

    // The result cast to a bool, as the XPath function boolean() does.
    bool test() const;

    // The expression as it was given.
    std::string text() const;

    xmlDoc* doc() const { return doc_; }
    // Shares the result, for walks that outlive this object.
    const XPathObjectPtr& result() const { return object_; }

    // What a failure calls the place where no node was found: the expression and, when the
    // expression was evaluated at a node, the path of that node.
    std::string missingNodeText() const;

  private:
    void evalExpression();

    XPathContextPtr context_;
    XPathObjectPtr object_;
    XmlCharPtr expression_;
    xmlDoc* doc_;
};

// Evaluates the expression as tXPathExpr does and gives the result cast to a bool.
bool testXPathExpr(xmlDoc* doc, const std::string& expr, xmlNode* contextNode);

}  // namespace zelvo
