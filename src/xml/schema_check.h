// A check against a schema of which each diagnostic is told and no failure is made.
#pragma once

#include <string>
#include <vector>

#include "xml/xml_document.h"

typedef struct _xmlError xmlError;

namespace zelvo {

// Whether the document is valid by the W3C XML Schema in the file. diagnostics: gets a text for
// each thing that libxml2 finds, in FormatXsdError's form. Raises tError_XmlInternal for a schema
// that is missing or broken.
bool passesSchema(const tXmlDocument& document, const std::string& xsdFile,
                  std::vector<std::string>& diagnostics);

// The name of the root element; empty if there is none.
std::string rootName(const tXmlDocument& document);

// One diagnostic in words.
std::string FormatXsdError(const xmlError* error);

// The head of a diagnostic. level: a value of xmlErrorLevel (libxml2).
std::string FormatErrorLevel(int level);

}  // namespace zelvo
