// The action --translate-dump: from the session's foreign dump to its canonical dump.
#pragma once

#include <string>

#include "xml/xml_document.h"

namespace zelvo {

// Checks the session's foreign dump with the DTD of the agent, or with the canonical one if the
// agent has none, and makes the canonical dump of it with the agent's stylesheet, or copies it if
// the agent has none. The outcome is not checked: its deployment does that. Raises AgentNotFound,
// what reading and checking a document and applying a stylesheet raise, and
// boost::filesystem::filesystem_error if the copying fails.
void action_translate_dump(const std::string& agentName);

}  // namespace zelvo
