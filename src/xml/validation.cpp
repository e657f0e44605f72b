#include "xml/validation.h"

#include <libxml/parser.h>
#include <libxml/uri.h>
#include <libxml/valid.h>

#include "xml/error_collector.h"
#include "xml/parser.h"
#include "xml/schema_handles.h"
#include "xml/xml_errors.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

// A context for checks against DTDs whose diagnostics go to the string. Null without memory.
XmlValidCtxtPtr newValidContext(std::string& errors) {
    XmlValidCtxtPtr context(xmlNewValidCtxt());
    if (context.get() != nullptr) {
        context.get()->userData = &errors;
        context.get()->error = libxmlErrorHandler;
        context.get()->warning = libxmlErrorHandler;
    }
    return context;
}

// The name in the form in which xmlParseDTD opens just this file: it takes names for URIs, and
// escapes a blank or a letter that is not ASCII twice.
std::string toUri(const std::string& fileName) {
    return takeXmlString(xmlURIEscapeStr(toXmlChar(fileName), BAD_CAST "/"));
}

}  // namespace

void tExternalDtdDoc::readFromFile() {
    refuseNetwork();
    // What libxml2 says of a bad file would go to standard error, as in readSchema.
    const ErrorCollector unused;
    dtd_ = XmlDtdPtr(xmlParseDTD(nullptr, toXmlChar(toUri(fileName_))));
    if (dtd_.get() == nullptr) {
        throw EXC(InvalidDtdFile) % fileName_;
    }
}

void tDtdValidator::validateXml(tXmlDocument& document) const {
    std::string errors;
    const XmlValidCtxtPtr context = newValidContext(errors);
    if (context.get() == nullptr) {
        throw EXC(tError_XmlInternal) % "Can not allocate memory for xmlValidCtxtPtr";
    }
    if (xmlValidateDocument(context.get(), document.doc()) == 0) {
        throw EXC(InternalDtdValidationFailed) % errors;
    }
}

void tDtdValidator::validateXml(tXmlDocument& document, const std::string& dtdFile) const {
    tExternalDtdDoc dtd(dtdFile);
    dtd.readFromFile();
    std::string errors;
    const XmlValidCtxtPtr context = newValidContext(errors);
    if (context.get() == nullptr) {
        throw EXC(tError_XmlInternal) % "Can not allocate memory for xmlValidCtxtPtr";
    }
    if (xmlValidateDtd(context.get(), document.doc(), dtd.dtd()) == 0) {
        throw EXC(ExternalDtdValidationFailed) % dtdFile % errors;
    }
}

namespace {

// Null for a file that is missing or no schema. What libxml2 says of that would go to standard
// error, where it would be taken for a failure of the utility.
SchemaPtr readSchema(xmlSchemaParserCtxt* parser) {
    const ErrorCollector unused;
    return SchemaPtr(xmlSchemaParse(parser));
}

}  // namespace

void validateSchema(tXmlDocument& document, const std::string& xsdFile) {
    refuseNetwork();
    const SchemaParserPtr parser(xmlSchemaNewParserCtxt(xsdFile.c_str()));
    if (!parser) {
        throw EXC(tError_XmlInternal) % "Can not allocate memory for xmlSchemaNewParserCtxt";
    }
    const SchemaPtr schema = readSchema(parser.get());
    if (!schema) {
        throw EXC(tError_XmlInternal) % "Can not allocate memory for xmlSchemaParse";
    }
    const SchemaValidCtxtPtr context(xmlSchemaNewValidCtxt(schema.get()));
    if (!context) {
        throw EXC(tError_XmlInternal) % "Can not allocate memory for xmlSchemaNewValidCtxt";
    }
    std::string errors;
    xmlSchemaSetValidErrors(context.get(), libxmlErrorHandler, libxmlErrorHandler, &errors);
    if (xmlSchemaValidateDoc(context.get(), document.doc()) != 0) {
        throw EXC(InternalDtdValidationFailed) % errors;
    }
}

}  // namespace zelvo
