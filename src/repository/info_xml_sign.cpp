// The half of tInfoXmlReader that signs and checks.
#include <algorithm>
#include <fstream>

#include "commons/files.h"
#include "exec/exec_cmd.h"
#include "repository/info_xml_document.h"
#include "repository/repository_log.h"
#include "xml/schema_check.h"

namespace zelvo {

namespace {

tXmlDocument loadDocument(const std::string& file) {
    try {
        return tXmlDocument(file.c_str());
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(tInfoXmlReader::XmlReaderError, failure) % "failed to load xml document";
    }
}

// A tool that came to no end of its own has judged nothing.
void requireAnswer(const ExecCmd& tool) {
    if (tool.couldNotStart || tool.retCode < 0) {
        throw EXC(tInfoXmlReader::XmlReaderError) %
            (tool.utility + (tool.couldNotStart ? " could not be started" : " was killed"));
    }
}

void logLine(const std::string& text) { LogMsg(text); }

// Runs work with a list for what libxml2 finds and tells it in the log. Raises XmlReaderError for
// what fails.
template <class Work>
auto withDiagnostics(Work&& work) {
    std::vector<std::string> diagnostics;
    const auto tell = [&] { std::for_each(diagnostics.begin(), diagnostics.end(), logLine); };
    try {
        auto result = work(diagnostics);
        tell();
        return result;
    } catch (const Exc<&tError_XmlInternal>& failure) {
        tell();
        throw EXC_INNER(tInfoXmlReader::XmlReaderError, failure) % failure.what();
    }
}

}  // namespace

bool InfoXmlSigned(const tXmlDocument& document) { return rootName(document) == ENVELOPE_NAME; }

bool IsSigned(const std::string& file) {
    LogMsg("Check file '" + file + "' sign existence");
    bool isSigned = false;
    readDocument(file, [&](XmlTextReader& reader) {
        isSigned = reader.readElement() && reader.localName() == ENVELOPE_NAME;
    });
    LogMsg("File '" + file + (isSigned ? "' is signed" : "' is not signed"));
    return isSigned;
}

int tInfoXmlReader::runSignTool(const std::string& command, std::string& output, bool mustSucceed) {
    ExecCmd tool(files::getZelvoUtilityPath("backup_sign"));
    tool << command << GetLocalPath();
    // Not its output, which is a document with the passwords of a whole account.
    LogMsg("Executing utility: " + tool.getString());
    tool.execCmdLine();
    LogMsg("The utility executed with the return code " + std::to_string(tool.retCode));
    if (tool.retCode != 0) {
        LogMsg(tool.stderr);
        tool.stdout.clear();
        if (mustSucceed) {
            tool.reportError();
        }
        requireAnswer(tool);
    }
    output = tool.stdout;
    return tool.retCode;
}

void tInfoXmlReader::replaceDocument(const std::string& kind, const std::string& text) {
    const std::string& file = tempFiles_.emplace_back(GetTempFilePath()).path();
    LogMsg("Save " + kind + " xml to temp file '" + file + "'");
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (out.fail()) {
        throw EXC(XmlReaderError) % ("unable to write file " + file);
    }
    localPath_ = file;
}

void tInfoXmlReader::Sign() {
    LogMsg("Sign info xml");
    if (IsSigned(GetLocalPath())) {
        return;
    }
    std::string document;
    runSignTool("sign", document, true);
    replaceDocument("signed", document);
    if (document.empty() || !IsSigned(localPath_)) {
        ClearTempFiles(std::nothrow);
        throw EXC(XmlReaderError) % "the signing tool has not signed the document";
    }
    isSignGood_.reset();
}

bool tInfoXmlReader::ValidateSign() {
    LogMsg("Validate xml by sign");
    if (isSignGood_) {
        return *isSignGood_;
    }
    std::string document;
    const bool isGood = runSignTool("verify", document, false) == 0;
    if (isGood && document.empty()) {
        throw EXC(XmlReaderError) % "the signing tool has given no document";
    }
    if (isGood) {
        replaceDocument("unsigned", document);
    }
    isSignGood_ = isGood;
    return isGood;
}

bool tInfoXmlReader::ValidateZelvoXsd() {
    LogMsg("Validate xml by xsd");
    const Schema schema = withDiagnostics([](std::vector<std::string>& diagnostics) {
        return Schema(files::getZelvoXsdFileName(), diagnostics);
    });
    tXmlDocument document = loadDocument(GetLocalPath());
    if (InfoXmlSigned(document)) {
        if (!ValidateSign()) {
            return false;
        }
        document = loadDocument(GetLocalPath());
    }
    return withDiagnostics([&](std::vector<std::string>& diagnostics) {
        return schema.allows(document, diagnostics);
    });
}

}  // namespace zelvo
