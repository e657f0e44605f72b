// The configuration of log4cpp for this process, and the categories that the system writes to.
#pragma once

#include <log4cpp/Category.hh>
#include <map>
#include <string>

namespace zelvo {

// Configures log4cpp from the installed "log4cpp.properties" on the first call in a process and
// does nothing on later ones. "${LOG_FILE_NAME}" in the file stands for the log file of theSession.
// debug: keeps the appender "A2" on the root category. Raises log4cpp::ConfigureFailure, a
// std::runtime_error, for a file that is missing or broken.
void initializeLog4Cpp(bool debug);

// Configures log4cpp from a file in the form that log4cpp reads. variables: what "${NAME}" stands
// for in the values of the file. Log files that come into being have mode 0600, since they show
// command lines with passwords. Raises log4cpp::ConfigureFailure.
void configureLog4Cpp(const std::string& fileName,
                      const std::map<std::string, std::string>& variables);

// The category of all that passes through theDebugLog, "p.log".
log4cpp::Category& logCategory();
// The category of the actions, "p.deployer".
log4cpp::Category& deployerCategory();
// The categories of the migration agents, "p.Agent" and "p.AgentsFactory".
log4cpp::Category& agentCategory();
log4cpp::Category& agentsFactoryCategory();

}  // namespace zelvo
