// A check against a schema of which each diagnostic is told and no failure is made.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "xml/xml_document.h"

typedef struct _xmlError xmlError;
typedef struct _xmlSchema xmlSchema;

extern "C" {
void xmlSchemaFree(xmlSchema* schema);
}

namespace zelvo {

// A W3C XML Schema. diagnostics: gets a text for each thing that libxml2 finds, in FormatXsdError's
// form.
class Schema {
  public:
    // Reads a file. Raises tError_XmlInternal for one that is missing or broken.
    Schema(const std::string& xsdFile, std::vector<std::string>& diagnostics);

    // Whether the document is valid. Raises tError_XmlInternal.
    bool allows(const tXmlDocument& document, std::vector<std::string>& diagnostics) const;

  private:
    struct Free {
        void operator()(xmlSchema* schema) const { xmlSchemaFree(schema); }
    };

    std::unique_ptr<xmlSchema, Free> schema_;
};

// The name of the root element; empty if there is none.
std::string rootName(const tXmlDocument& document);

// One diagnostic in words.
std::string FormatXsdError(const xmlError* error);

// The head of a diagnostic. level: a value of xmlErrorLevel (libxml2).
std::string FormatErrorLevel(int level);

}  // namespace zelvo
