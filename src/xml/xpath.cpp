#include "xml/xpath.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>

#include "commons/errors.h"
#include "xml/xml_errors.h"
#include "xml/xml_node.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

struct FreeContext {
    void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};

// The context that the last expression left. A new one enters all functions of XPath into a table,
// which costs more than evaluating most expressions.
std::unique_ptr<xmlXPathContext, FreeContext>& spareContext() {
    static std::unique_ptr<xmlXPathContext, FreeContext> spare;
    return spare;
}

// Gives a context for a document, or null when there is no memory.
xmlXPathContext* acquireXPathContext(xmlDoc* doc) {
    xmlXPathContext* context = spareContext().release();
    if (context == nullptr) {
        return xmlXPathNewContext(doc);
    }
    context->doc = doc;
    return context;
}

}  // namespace

void releaseXPathContext(xmlXPathContext* context) {
    if (spareContext() != nullptr) {
        xmlXPathFreeContext(context);
        return;
    }
    xmlResetError(&context->lastError);
    context->doc = nullptr;
    context->node = nullptr;
    spareContext().reset(context);
}

tXPathExpr::tXPathExpr(xmlDoc* doc, const std::string& expr, xmlNode* contextNode)
    : context_(acquireXPathContext(doc)), expression_(xmlStrdup(toXmlChar(expr))), doc_(doc) {
    if (context_.get() == nullptr) {
        throw EXC(AssertionFailed) % "xpathCtx_.get() != NULL";
    }
    // Without a node of its own a context finds nothing by relative paths.
    context_.get()->node = contextNode != nullptr ? contextNode : reinterpret_cast<xmlNode*>(doc);
    evalExpression();
    context_.get()->node = contextNode;
}

void tXPathExpr::evalExpression() {
    object_ = XPathObjectPtr(xmlXPathEvalExpression(expression_.get(), context_.get()));
    if (object_.get() == nullptr) {
        throw EXC(tError_XPath_CantEvaluate) % text();
    }
}

xmlNodeSet* tXPathExpr::getNodeSet() const {
    if (object_.get()->type != XPATH_NODESET) {
        throw EXC(tError_XPath_TypesMismatch) % text() % "nodeset";
    }
    return object_.get()->nodesetval;
}

xmlNode* tXPathExpr::getNode() const {
    const xmlNodeSet* nodes = getNodeSet();
    if (nodes == nullptr || nodes->nodeNr == 0) {
        throw EXC(tError_XPath_CantEvaluate) % missingNodeText();
    }
    return nodes->nodeTab[0];
}

XmlNode tXPathExpr::getXmlNode() const { return {doc_, getNode()}; }

std::string tXPathExpr::str() const { return takeXmlString(xmlXPathCastToString(object_.get())); }

double tXPathExpr::number() const { return xmlXPathCastToNumber(object_.get()); }

bool tXPathExpr::test() const { return xmlXPathCastToBoolean(object_.get()) != 0; }

std::string tXPathExpr::text() const { return toString(expression_.get()); }

std::string tXPathExpr::missingNodeText() const {
    if (context_.get()->node == nullptr) {
        return text();
    }
    return text() + " at path '" + takeXmlString(xmlGetNodePath(context_.get()->node)) + "'";
}

bool testXPathExpr(xmlDoc* doc, const std::string& expr, xmlNode* contextNode) {
    return tXPathExpr(doc, expr, contextNode).test();
}

}  // namespace zelvo
