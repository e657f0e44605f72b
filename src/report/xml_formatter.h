// The XML form of a failure, for the result document.
#pragma once

#include <string>

#include "commons/exception.h"
#include "xml/xml_document.h"

namespace zelvo {

// Writes a failure into a "message" element: the attributes "code" and "severity", the children
// "context", "file", "line" and "text", and in a nested "message" what caused it.
class XmlMsgFormatter : public ExInfoVisitor {
  public:
    // Both must outlive the formatter. element: an empty "message" element of the document.
    XmlMsgFormatter(tXmlRmkDocument& document, xmlNode* element)
        : document_(document), element_(element) {}

    // Sets "severity" as well: whatever is told here is an error.
    void setCode(const std::string& code) override;
    void setMessage(const std::string& message) override;
    void setContext(const std::string& context) override;
    void setFile(const std::string& file) override;
    void setLine(int line) override;
    void advanceToInnerException() override;

  private:
    tXmlRmkDocument& document_;
    xmlNode* element_;
};

}  // namespace zelvo
