// The document that tells which migration agents are installed.
#pragma once

#include <memory>
#include <string>

#include "xml/xml_document.h"

namespace zelvo {

// A list of agents.
class AgentsList {
  public:
    virtual ~AgentsList() = default;

    // description: a text for people.
    virtual void addAgent(const std::string& name, const std::string& description) = 0;
    // Writes the list to standard output. Raises tError_SaveFile.
    virtual void saveDocToStdout() = 0;
};

// The list as a document: "agents-list", in it an "agent" with "name" and "description" for each.
class XmlAgentsList : public tXmlRmkDocument, public AgentsList {
  public:
    void addAgent(const std::string& name, const std::string& description) override;
    void saveDocToStdout() override;
};

// An empty list.
std::unique_ptr<XmlAgentsList> createAgentsListFile();

// The list of all installed agents in the order of their names. Raises
// boost::filesystem::filesystem_error if the directory of agents cannot be read.
std::unique_ptr<AgentsList> getAgentsList();

}  // namespace zelvo
