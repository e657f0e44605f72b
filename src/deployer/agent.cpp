#include "deployer/agent.h"

#include <algorithm>
#include <boost/format.hpp>
#include <fstream>

#include "commons/files.h"
#include "report/log4cpp_setup.h"

namespace zelvo {

namespace {

constexpr char kWhiteSpace[] = " \t\n\v\f\r";

void writeLine(const std::string& text) { agentCategory().infoStream() << text; }

std::string withoutLeadingSpace(const std::string& text) {
    const std::size_t start = text.find_first_not_of(kWhiteSpace);
    return start == std::string::npos ? "" : text.substr(start);
}

// Where the value of the token is kept. Raises ParseFailed for a token that does not exist.
std::size_t indexOf(const std::string& token, const std::string& fileName) {
    const auto* const entry = std::find(entries.begin(), entries.end(), token);
    if (entry == entries.end()) {
        throw EXC(Agent::ParseFailed) %
            (boost::format("Illegal parameter found in %1%: %2%") % fileName % token).str();
    }
    return static_cast<std::size_t>(entry - entries.begin());
}

// Takes in one line that is not empty. number: of the line, from 1.
void parseLine(const std::string& line, const std::string& fileName, int number,
               Agent::Values& values) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
        throw EXC(Agent::ParseFailed) %
            (boost::format("%1%:%2%: Expected '<token>: <value>', got '%3%'") % fileName % number %
             line)
                .str();
    }
    values[indexOf(line.substr(0, colon), fileName)] = withoutLeadingSpace(line.substr(colon + 1));
}

// The path of a file in the agent's "control"; empty if it is not named.
std::string controlFile(const std::string& agentName, const std::string& fileName) {
    return fileName.empty() ? ""
                            : files::agents::getDir() + "/" + agentName + "/control/" + fileName;
}

Agent::Data toData(const Agent::Values& values) {
    return {values[0], values[1], values[2], values[3], values[4]};
}

}  // namespace

Agent::Agent(const std::string& name, const std::string& specFileName)
    : name_(name), data_(toData(parse(specFileName))) {
    writeLine("Agent " + name_);
    logContents();
}

Agent::Agent(const std::string& name, const boost::filesystem::path& specFile)
    : Agent(name, specFile.string()) {}

Agent::Values Agent::parse(const std::string& fileName) {
    Values values;
    std::ifstream file(fileName);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (!line.empty()) {
            parseLine(line, fileName, number, values);
        }
    }
    return values;
}

std::string Agent::getDocumentType() const { return controlFile(name_, data_.documentType); }

std::string Agent::getStylesheet() const { return controlFile(name_, data_.stylesheet); }

void Agent::logContents() const {
    writeLine("Description: " + data_.description);
    writeLine("EntryPoint: " + data_.entryPoint);
    if (!data_.documentType.empty()) {
        writeLine("DocumentType: " + getDocumentType());
    }
    if (!data_.stylesheet.empty()) {
        writeLine("Stylesheet: " + getStylesheet());
    }
    writeLine("Interpreter: " + (data_.interpreter.empty() ? "perl" : data_.interpreter));
}

}  // namespace zelvo
