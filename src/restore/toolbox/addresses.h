// The IP addresses of the panel.
#pragma once

#include <map>
#include <string>

#include "xml/tool_answers.h"

namespace zelvo {

// The panel's addresses, asked for anew. Whether the utility failed shows in its answer alone;
// raises what getZelvoIpInfo raises.
std::map<std::string, ZelvoIp> askAddresses();

}  // namespace zelvo
