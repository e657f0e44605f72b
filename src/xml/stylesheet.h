// XSLT 1.0 stylesheets and the documents that they make. A stylesheet can neither write files nor
// reach the network.
#pragma once

#include <string>

#include "xml/pointer.h"
#include "xml/xml_document.h"

namespace zelvo {

// A stylesheet; copies share it. Made empty and filled by readFromFile.
class tXsltStylesheet {
  public:
    // Parses the file and gives 1. Raises tError_XslParse_CanNotParseFile.
    int readFromFile(const char* fileName);

    const XsltStylesheetPtr& stylesheet() const { return stylesheet_; }

  private:
    XsltStylesheetPtr stylesheet_;
};

// What a stylesheet made of a document. Shares the stylesheet, whose output rules it is written by.
class tXmlDocFromXslt : public tXmlDocument {
  public:
    tXmlDocFromXslt(const XmlDocPtr& doc, const XsltStylesheetPtr& stylesheet);

    using tXmlDocument::saveToFile;
    // Writes the document in place and as the stylesheet's xsl:output says. Raises AssertionFailed
    // for a null or empty name and tError_SaveFile.
    void saveToFile(const char* fileName) override;

  private:
    XsltStylesheetPtr stylesheet_;
};

// Applies the stylesheet without parameters. Raises AssertionFailed for an empty stylesheet,
// tError_Xslt_ApplyStylesheetTerminated if the stylesheet stopped itself (xsl:message with
// terminate) or was stopped because it went too deep, did too much for the size of the document or
// has a query that cannot be evaluated, tError_XmlInternal if it failed otherwise,
// tError_Xslt_CantApplyStylesheet if it gave nothing. What libxslt has to say of the reason goes to
// standard error.
tXmlDocFromXslt apply_stylesheet(tXsltStylesheet& stylesheet, tXmlDocument& document);

}  // namespace zelvo
