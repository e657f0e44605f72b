#include "deployer/agents_list.h"

#include "deployer/agents_factory.h"

namespace zelvo {

void XmlAgentsList::addAgent(const std::string& name, const std::string& description) {
    xmlNode* const agent = newChild(root(), "agent");
    newTextChild(agent, "name", name);
    newTextChild(agent, "description", description);
}

void XmlAgentsList::saveDocToStdout() { saveToStdout(); }

std::unique_ptr<XmlAgentsList> createAgentsListFile() {
    auto list = std::make_unique<XmlAgentsList>();
    list->initNewDoc("agents-list");
    return list;
}

std::unique_ptr<AgentsList> getAgentsList() {
    const AgentsFactory::Agents& agents = theAgentsFactory().getAllAgents();
    std::unique_ptr<AgentsList> list = createAgentsListFile();
    for (const auto& [name, agent] : agents) {
        list->addAgent(name, agent->description());
    }
    return list;
}

}  // namespace zelvo
