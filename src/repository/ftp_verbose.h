// What libcurl tells of a connection.
#pragma once

#include <string>

namespace zelvo {

// A line of the control connection as it may stand in a log: without its end, and with "***" for
// the password, in the command that sends it and wherever the server repeats it.
std::string maskPassword(const std::string& line, const std::string& password);

}  // namespace zelvo
