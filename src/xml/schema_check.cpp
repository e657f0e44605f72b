#include "xml/schema_check.h"

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include "xml/parser.h"
#include "xml/schema_handles.h"
#include "xml/xml_errors.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

// Nothing may be raised through the library, so the texts are kept.
void XmlSchemaErrorHandler(void* diagnostics, xmlError* error) {
    static_cast<std::vector<std::string>*>(diagnostics)->push_back(FormatXsdError(error));
}

// The message without the line feed at its end.
std::string messageOf(const xmlError& error) {
    std::string message = error.message == nullptr ? "" : error.message;
    return message.ends_with('\n') ? message.substr(0, message.size() - 1) : message;
}

}  // namespace

Schema::Schema(const std::string& xsdFile, std::vector<std::string>& diagnostics) {
    refuseNetwork();
    const SchemaParserPtr parser(xmlSchemaNewParserCtxt(xsdFile.c_str()));
    if (!parser) {
        throw EXC(tError_XmlInternal) % "failed to allocate parser context";
    }
    xmlSchemaSetParserStructuredErrors(parser.get(), XmlSchemaErrorHandler, &diagnostics);
    schema_.reset(xmlSchemaParse(parser.get()));
    if (!schema_) {
        throw EXC(tError_XmlInternal) % "failed to parse xml schema";
    }
}

bool Schema::allows(const tXmlDocument& document, std::vector<std::string>& diagnostics) const {
    const SchemaValidCtxtPtr context(xmlSchemaNewValidCtxt(schema_.get()));
    if (!context) {
        throw EXC(tError_XmlInternal) % "failed to allocate validation context";
    }
    xmlSchemaSetValidStructuredErrors(context.get(), XmlSchemaErrorHandler, &diagnostics);
    return xmlSchemaValidateDoc(context.get(), document.doc()) == 0;
}

std::string rootName(const tXmlDocument& document) {
    const xmlNode* const root = xmlDocGetRootElement(document.doc());
    return root == nullptr ? "" : toString(root->name);
}

std::string FormatXsdError(const xmlError* error) {
    std::string text = "Xml validation " + FormatErrorLevel(error->level) + messageOf(*error) +
                       " at line " + std::to_string(error->line) + " column " +
                       std::to_string(error->int2) + "\nAdditional info:";
    for (const char* info : {error->str1, error->str2, error->str3}) {
        if (info != nullptr) {
            text += std::string("\n") + info;
        }
    }
    return text + "\nExtra number info: " + std::to_string(error->int1);
}

std::string FormatErrorLevel(int level) {
    switch (level) {
        case XML_ERR_NONE:
            return "message: ";
        case XML_ERR_WARNING:
            return "warning: ";
        case XML_ERR_ERROR:
            return "error: ";
        case XML_ERR_FATAL:
            return "fatal error: ";
        default:
            return "message of level " + std::to_string(level) + ": ";
    }
}

}  // namespace zelvo
