#include "xml/xml_document.h"

#include <libxml/tree.h>
#include <libxml/xmlIO.h>
#include <libxml/xmlsave.h>

#include <ostream>

#include "commons/errors.h"
#include "commons/input_file.h"
#include "xml/error_collector.h"
#include "xml/output_name.h"
#include "xml/parser.h"
#include "xml/stream_io.h"
#include "xml/xml_errors.h"

namespace zelvo {

tXmlDocument::tXmlDocument() { createNewDoc(); }

tXmlDocument::tXmlDocument(const char* fileName) { readFromFile(fileName); }

tXmlDocument::tXmlDocument(const boost::filesystem::path& file) { readFromFile(file.c_str()); }

tXmlDocument::tXmlDocument(const std::string& content) {
    if (content.empty()) {
        throw EXC(AssertionFailed) % "content.size()";
    }
    ErrorCollector errors;
    doc_ = XmlDocPtr(parseXmlText(content));
    if (doc_.get() == nullptr) {
        throw EXC(tError_ParseFile) % "-" % errors.text();
    }
}

tXmlDocument::tXmlDocument(const XmlDocPtr& doc) : doc_(doc) {}

void tXmlDocument::createNewDoc() {
    doc_ = XmlDocPtr(xmlNewDoc(BAD_CAST "1.0"));
    if (doc_.get() == nullptr) {
        throw EXC(tError_XmlInternal) % "#0001: Can not create new XML document.";
    }
}

int tXmlDocument::readFromFile(const char* fileName) {
    if (fileName == nullptr) {
        throw EXC(AssertionFailed) % "filename != NULL";
    }
    if (*fileName == 0) {
        throw EXC(AssertionFailed) % "*filename != 0";
    }
    const std::string name = fileName;
    if (name != "-" && !check_input_file(name, true)) {
        throw EXC(tError_WrongInputFile) % name;
    }
    ErrorCollector errors;
    doc_ = XmlDocPtr(parseXmlFile(fileName));
    if (doc_.get() == nullptr) {
        throw EXC(tError_ParseFile) % name % errors.text();
    }
    return 1;
}

void tXmlDocument::saveToFile(const char* fileName) {
    if (fileName == nullptr) {
        throw EXC(AssertionFailed) % "filename != NULL";
    }
    if (*fileName == 0) {
        throw EXC(AssertionFailed) % "*filename != 0";
    }
    // What libxml2 says of a full disk is in the failure's cause and not for standard error.
    const ErrorCollector unused;
    if (xmlSaveFile(outputName(fileName).c_str(), doc()) < 0) {
        throw EXC(tError_SaveFile) % fileName;
    }
}

void tXmlDocument::saveToFile(const std::string& fileName) { saveToFile(fileName.c_str()); }

int tXmlDocument::saveToStdout() {
    saveToFile("-");
    return 0;
}

int tXmlDocument::saveToBuffer(xmlOutputBuffer* buffer) {
    if (buffer == nullptr) {
        throw EXC(AssertionFailed) % "buffer != 0";
    }
    const int result = xmlSaveFileTo(buffer, doc(), nullptr);
    if (result < 0) {
        throw EXC(tError_SaveFile) % "in-memory buffer";
    }
    return result;
}

void tXmlDocument::saveToStream(std::ostream& stream) {
    saveToBuffer(xmlOutputBufferCreateIO(StreamXmlIoHandler::writeCallback,
                                         StreamXmlIoHandler::closeCallback, &stream, nullptr));
}

}  // namespace zelvo
