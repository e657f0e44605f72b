#include "report/log4cpp_setup.h"

#include <sys/stat.h>

#include <log4cpp/Appender.hh>
#include <log4cpp/PropertyConfigurator.hh>
#include <memory>
#include <vector>

#include "commons/files.h"
#include "commons/scoped_variable.h"
#include "commons/session.h"

namespace zelvo {

namespace {

bool log4cppInitialized = false;

// Gives new files to their owner alone as long as it lives.
class PrivateFiles {
  public:
    PrivateFiles() : before_(umask(S_IRWXG | S_IRWXO)) {}
    ~PrivateFiles() { umask(before_); }
    PrivateFiles(const PrivateFiles&) = delete;
    PrivateFiles& operator=(const PrivateFiles&) = delete;

  private:
    mode_t before_;
};

void removeDebugAppender() {
    log4cpp::Category& root = log4cpp::Category::getRoot();
    if (log4cpp::Appender* appender = root.getAppender("A2")) {
        root.removeAppender(appender);
    }
}

}  // namespace

void configureLog4Cpp(const std::string& fileName,
                      const std::map<std::string, std::string>& variables) {
    // log4cpp fills references from the environment, value by value and behind its own parsing: no
    // character of a path can be mistaken for syntax there.
    std::vector<std::unique_ptr<ScopedVariable>> set;
    set.reserve(variables.size());
    for (const auto& [name, value] : variables) {
        set.push_back(std::make_unique<ScopedVariable>(name, value));
    }
    const PrivateFiles privately;
    log4cpp::PropertyConfigurator::configure(fileName);
}

void initializeLog4Cpp(bool debug) {
    const std::map<std::string, std::string> variables = {
        {"LOG_FILE_NAME", theSession->getLogFileName()}};
    if (log4cppInitialized) {
        return;
    }
    configureLog4Cpp(files::getRmkLogConfigFileName(), variables);
    if (!debug) {
        removeDebugAppender();
    }
    log4cppInitialized = true;
}

log4cpp::Category& logCategory() {
    static log4cpp::Category& category = log4cpp::Category::getInstance("p.log");
    return category;
}

log4cpp::Category& deployerCategory() {
    static log4cpp::Category& category = log4cpp::Category::getInstance("p.deployer");
    return category;
}

log4cpp::Category& agentCategory() {
    static log4cpp::Category& category = log4cpp::Category::getInstance("p.Agent");
    return category;
}

log4cpp::Category& agentsFactoryCategory() {
    static log4cpp::Category& category = log4cpp::Category::getInstance("p.AgentsFactory");
    return category;
}

}  // namespace zelvo
