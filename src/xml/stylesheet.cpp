#include "xml/stylesheet.h"

#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <memory>

#include "commons/errors.h"
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
