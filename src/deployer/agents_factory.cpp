#include "deployer/agents_factory.h"

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include "commons/files.h"
#include "report/log4cpp_setup.h"

namespace zelvo {

namespace fs = boost::filesystem;

namespace {

void writeLine(const std::string& text) { agentsFactoryCategory().infoStream() << text; }

// What cannot even be looked at, such as a loop of links or a name that is too long, is neither of
// the two.
fs::file_type typeOf(const fs::path& path) {
    boost::system::error_code ignored;
    return fs::status(path, ignored).type();
}

bool isDirectory(const fs::path& path) { return typeOf(path) == fs::directory_file; }

bool isFile(const fs::path& path) {
    const fs::file_type type = typeOf(path);
    return type != fs::status_error && type != fs::file_not_found && type != fs::directory_file;
}

}  // namespace

boost::shared_ptr<Agent> AgentsFactory::getAgent(const std::string& name) {
    if (agents_.find(name) == agents_.end()) {
        parseAgent(name);
    }
    const auto found = agents_.find(name);
    if (found == agents_.end()) {
        throw EXC(AgentNotFound) % name;
    }
    return found->second;
}

const AgentsFactory::Agents& AgentsFactory::getAllAgents() {
    writeLine("Parsing available agents info");
    for (const fs::directory_entry& entry : fs::directory_iterator(files::agents::getDir())) {
        if (isDirectory(entry.path())) {
            parseAgent(entry.path().filename().string());
        }
    }
    return agents_;
}

void AgentsFactory::parseAgent(const std::string& name) {
    writeLine("Parsing " + name);
    parseAgent(name, files::agents::getDir() + "/" + name);
}

void AgentsFactory::parseAgent(const std::string& name, const fs::path& directory) {
    const fs::path specFile = directory / "control" / "spec";
    if (!isFile(specFile)) {
        writeLine(specFile.string() + " is not a regular file");
        return;
    }
    try {
        agents_.emplace(directory.filename().string(), boost::make_shared<Agent>(name, specFile));
    } catch (const Exc<&Agent::ParseFailed>& failure) {
        writeLine(specFile.string() + " is not a valid agent spec file");
        writeLine(failure.what());
    }
}

AgentsFactory& theAgentsFactory() {
    static AgentsFactory factory;
    return factory;
}

}  // namespace zelvo
