#include "deployer/translate_dump.h"

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

#include "commons/files.h"
#include "commons/session.h"
#include "deployer/agents_factory.h"
#include "report/log4cpp_setup.h"
#include "report/migration_status.h"
#include "report/result_log.h"
#include "xml/stylesheet.h"
#include "xml/validation.h"
#include "xml/xml_errors.h"

namespace zelvo {

namespace fs = boost::filesystem;

namespace {

void writeLine(const std::string& text) { deployerCategory().debugStream() << text; }

void tryToValidate(tXmlDocument& document, const std::string& dtdFile) {
    tDtdValidator().validateXml(document, dtdFile);
}

void validate(tXmlDocument& document, const Agent& agent) {
    const std::string ownDtd = agent.getDocumentType();
    const std::string dtdFile = ownDtd.empty() ? files::getZelvoDtdFileName() : ownDtd;
    writeLine("Validating dump with " + dtdFile);
    tryToValidate(document, dtdFile);
}

void copyDump(const fs::path& source, const fs::path& target) {
    writeLine("No conversion required: copying file.");
    if (fs::exists(target) && fs::equivalent(source, target)) {
        // Removing the one would remove the other.
        throw EXC(tError_SaveFile) % target.string();
    }
    fs::remove(target);
    fs::copy_file(source, target);
    theLog->setSuccess(true);
}

void convertDump(tXmlDocument& document, const std::string& stylesheetFile,
                 const fs::path& target) {
    tXsltStylesheet stylesheet;
    stylesheet.readFromFile(stylesheetFile.c_str());
    tXmlDocFromXslt converted = apply_stylesheet(stylesheet, document);
    converted.saveToFile(target.string());
}

}  // namespace

void action_translate_dump(const std::string& agentName) {
    const fs::path source = theSession->getDumpFileName();
    const fs::path target = theSession->getZelvoDumpFileName();
    writeLine("Translation of " + source.string() + " to " + target.string() + " requested");
    const boost::shared_ptr<Agent> agent = theAgentsFactory().getAgent(agentName);
    // Its end writes the file, however the translation ends.
    const std::unique_ptr<MigrationStatus> status = createMigrationStatusFile();
    tXmlDocument document(source);
    validate(document, *agent);
    const std::string stylesheetFile = agent->getStylesheet();
    if (stylesheetFile.empty()) {
        copyDump(source, target);
    } else {
        convertDump(document, stylesheetFile, target);
    }
}

}  // namespace zelvo
