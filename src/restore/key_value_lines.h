// The form in which the panel tells the properties of an object.
#pragma once

#include <map>
#include <string>

namespace zelvo {

// Cuts text into lines of the form KEY=VALUE, at the first "=" of each; a later line of the same
// key replaces an earlier one, and a line without "=" is passed over. A carriage return before the
// line feed does not count.
std::map<std::string, std::string> parseKeyValueLines(const std::string& text);

}  // namespace zelvo
