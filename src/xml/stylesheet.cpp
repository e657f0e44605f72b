#include "xml/stylesheet.h"

#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <memory>

#include "commons/errors.h"
#include "xml/error_collector.h"
#include "xml/output_name.h"
#include "xml/parser.h"
#include "xml/xml_errors.h"

namespace zelvo {

namespace {

struct FreeTransform {
    void operator()(xsltTransformContext* context) const { xsltFreeTransformContext(context); }
};
using TransformPtr = std::unique_ptr<xsltTransformContext, FreeTransform>;

// What every stylesheet is forbidden. Lives as long as the process.
xsltSecurityPrefs* securityPrefs() {
    static const std::unique_ptr<xsltSecurityPrefs, void (*)(xsltSecurityPrefs*)> prefs = [] {
        xsltSecurityPrefs* made = xsltNewSecurityPrefs();
        for (const auto what : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                                XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK}) {
            xsltSetSecurityPrefs(made, what, xsltSecurityForbid);
        }
        return std::unique_ptr<xsltSecurityPrefs, void (*)(xsltSecurityPrefs*)>(
            made, xsltFreeSecurityPrefs);
    }();
    return prefs.get();
}

// How much a stylesheet may do: the bigger the document, the more. What uses this up would never
// end, such as a template that calls itself twice; depth alone stops only what calls itself once.
constexpr unsigned long kInstructionsAtLeast = 1'000'000;
constexpr unsigned long kInstructionsPerElement = 10'000;
// A query may look at many nodes.
constexpr unsigned long kQueryStepsPerInstruction = 100;

void limitOperations(xsltTransformContext* context, const xmlDoc* document) {
    const unsigned long elements = elementCount(document);
    context->opLimit = kInstructionsAtLeast + kInstructionsPerElement * elements;
    context->xpathCtxt->opLimit = kQueryStepsPerInstruction * context->opLimit;
}

}  // namespace

int tXsltStylesheet::readFromFile(const char* fileName) {
    refuseNetwork();
    stylesheet_ = XsltStylesheetPtr(xsltParseStylesheetFile(BAD_CAST fileName));
    if (stylesheet_.get() == nullptr) {
        throw EXC(tError_XslParse_CanNotParseFile) % fileName;
    }
    return 1;
}

tXmlDocFromXslt::tXmlDocFromXslt(const XmlDocPtr& doc, const XsltStylesheetPtr& stylesheet)
    : tXmlDocument(doc), stylesheet_(stylesheet) {}

void tXmlDocFromXslt::saveToFile(const char* fileName) {
    if (fileName == nullptr) {
        throw EXC(AssertionFailed) % "filename != NULL";
    }
    if (*fileName == 0) {
        throw EXC(AssertionFailed) % "*filename != 0";
    }
    if (doc()->children == nullptr) {
        // The library writes no file for an empty result and calls that a success; an older file
        // would pass for the outcome.
        throw EXC(tError_SaveFile) % fileName;
    }
    // What libxml2 says of a full disk is in the failure's cause and not for standard error.
    const ErrorCollector unused;
    const int result =
        xsltSaveResultToFilename(outputName(fileName).c_str(), doc(), stylesheet_.get(), 0);
    if (result < 0) {
        throw EXC(tError_SaveFile) % fileName;
    }
}

tXmlDocFromXslt apply_stylesheet(tXsltStylesheet& stylesheet, tXmlDocument& document) {
    const XsltStylesheetPtr& style = stylesheet.stylesheet();
    const TransformPtr context(
        style.get() == nullptr ? nullptr : xsltNewTransformContext(style.get(), document.doc()));
    if (!context) {
        throw EXC(AssertionFailed) % "ctxt != NULL";
    }
    xsltSetCtxtSecurityPrefs(securityPrefs(), context.get());
    limitOperations(context.get(), document.doc());
    XmlDocPtr result(xsltApplyStylesheetUser(style.get(), document.doc(), nullptr, nullptr, nullptr,
                                             context.get()));
    if (context->state == XSLT_STATE_ERROR) {
        throw EXC(tError_XmlInternal) %
            "Some error while applying stylesheet. Check the error reason and try again.";
    }
    if (context->state == XSLT_STATE_STOPPED) {
        throw EXC(tError_Xslt_ApplyStylesheetTerminated);
    }
    if (result.get() == nullptr) {
        throw EXC(tError_Xslt_CantApplyStylesheet);
    }
    return {result, style};
}

}  // namespace zelvo
