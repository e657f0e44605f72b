// Checks of documents against a DTD or a schema. Each turns all that libxml2 says into the text of
// one failure; a document that passes leaves no trace of warnings.
#pragma once

#include <string>

#include "xml/pointer.h"
#include "xml/xml_document.h"

namespace zelvo {

// A DTD that stands in a file of its own.
class tExternalDtdDoc {
  public:
    explicit tExternalDtdDoc(const std::string& fileName) : fileName_(fileName) {}

    // Parses the file. Raises InvalidDtdFile for one that is missing or broken.
    void readFromFile();

    // The parsed DTD, which stays owned here; null before readFromFile.
    xmlDtd* dtd() const { return dtd_.get(); }

  private:
    std::string fileName_;
    XmlDtdPtr dtd_;
};

class tDtdValidator {
  public:
    // Checks against the DTD that the document itself names; a document without one fails. Raises
    // InternalDtdValidationFailed with the diagnostics, and tError_XmlInternal without memory.
    void validateXml(tXmlDocument& document) const;

    // Checks against the DTD in the file. Raises InvalidDtdFile, ExternalDtdValidationFailed with
    // the diagnostics, and tError_XmlInternal without memory.
    void validateXml(tXmlDocument& document, const std::string& dtdFile) const;
};

// Checks against the W3C XML Schema in the file. Raises InternalDtdValidationFailed with the
// diagnostics. A schema file that is missing or broken is tError_XmlInternal, in the words of a
// lack of memory: libxml2 does not tell the two apart.
void validateSchema(tXmlDocument& document, const std::string& xsdFile);

}  // namespace zelvo
