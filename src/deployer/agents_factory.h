// The migration agents of the installation, each read once in a run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "deployer/agent.h"

ERROR_TAG(AgentNotFound, "Agent %1% was not found or does not contain proper spec file");

namespace zelvo {

// Finds agents and keeps them by name.
class AgentsFactory {
  public:
    using Agents = std::map<std::string, boost::shared_ptr<Agent>>;

    // The agent of that name, read at the first call for it. Raises AgentNotFound if there is none
    // or its spec file cannot be understood; a later call then reads the file anew.
    boost::shared_ptr<Agent> getAgent(const std::string& name);

    // All agents that are installed and have a good spec file. Raises
    // boost::filesystem::filesystem_error if the directory of agents cannot be read.
    const Agents& getAllAgents();

    // Reads an agent and keeps it. What is wrong with it is told in the log category of the
    // factory, and the agent stays unknown. name: of its directory below files::agents::getDir.
    void parseAgent(const std::string& name);
    // The same. directory: of the agent; its last part is the name under which the agent is kept,
    // unless an agent of that name is there already.
    void parseAgent(const std::string& name, const boost::filesystem::path& directory);

  private:
    Agents agents_;
};

// The one factory of the process, which lives until the process ends.
AgentsFactory& theAgentsFactory();

}  // namespace zelvo
