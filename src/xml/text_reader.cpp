#include "xml/text_reader.h"

#include <libxml/xmlreader.h>

#include "commons/input_file.h"
#include "xml/error_collector.h"
#include "xml/parser.h"
#include "xml/xml_errors.h"
#include "xml/xml_string.h"

namespace zelvo {

namespace {

void gather(void* errors, const char* message, xmlParserSeverities, xmlTextReaderLocatorPtr) {
    libxmlErrorHandler(errors, "%s", message);
}

// What the library says of a file that it cannot open would go to standard error.
xmlTextReader* openReader(const std::string& fileName) {
    refuseNetwork();
    // A pipe would be waited for.
    if (!check_input_file(fileName, true)) {
        return nullptr;
    }
    const ErrorCollector unused;
    return xmlReaderForFile(fileName.c_str(), nullptr, XML_PARSE_NONET);
}

}  // namespace

XmlTextReader::XmlTextReader(const std::string& fileName)
    : fileName_(fileName), reader_(openReader(fileName)) {
    if (!reader_) {
        throw EXC(tError_WrongInputFile) % fileName;
    }
    xmlTextReaderSetErrorHandler(reader_.get(), gather, errors_.get());
}

bool XmlTextReader::read() {
    const int result = xmlTextReaderRead(reader_.get());
    if (result < 0) {
        raise();
    }
    return result > 0;
}

bool XmlTextReader::readElement() {
    while (read()) {
        if (isElement()) {
            return true;
        }
    }
    return false;
}

bool XmlTextReader::isElement() const {
    return xmlTextReaderNodeType(reader_.get()) == XML_READER_TYPE_ELEMENT;
}

bool XmlTextReader::isElementEnd() const {
    return xmlTextReaderNodeType(reader_.get()) == XML_READER_TYPE_END_ELEMENT;
}

bool XmlTextReader::isText() const {
    const int type = xmlTextReaderNodeType(reader_.get());
    return type == XML_READER_TYPE_TEXT || type == XML_READER_TYPE_CDATA ||
           type == XML_READER_TYPE_WHITESPACE || type == XML_READER_TYPE_SIGNIFICANT_WHITESPACE;
}

bool XmlTextReader::isEntityReference() const {
    return xmlTextReaderNodeType(reader_.get()) == XML_READER_TYPE_ENTITY_REFERENCE;
}

bool XmlTextReader::isEmptyElement() const {
    return xmlTextReaderIsEmptyElement(reader_.get()) == 1;
}

std::string XmlTextReader::name() const { return toString(xmlTextReaderConstName(reader_.get())); }

std::string XmlTextReader::localName() const {
    return toString(xmlTextReaderConstLocalName(reader_.get()));
}

std::string XmlTextReader::value() const {
    return toString(xmlTextReaderConstValue(reader_.get()));
}

std::string XmlTextReader::attribute(const std::string& name) const {
    return takeXmlString(xmlTextReaderGetAttribute(reader_.get(), toXmlChar(name)));
}

std::string XmlTextReader::innerXml() {
    std::string text = takeXmlString(xmlTextReaderReadInnerXml(reader_.get()));
    if (xmlTextReaderReadState(reader_.get()) == XML_TEXTREADER_MODE_ERROR) {
        raise();
    }
    return text;
}

void XmlTextReader::raise() const { throw EXC(tError_ParseFile) % fileName_ % *errors_; }

}  // namespace zelvo
