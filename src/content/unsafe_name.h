// Names of a dump that become parts of a path. No utility need have seen them: an element that only
// carries what lies below it reaches content without one. A backslash is refused, as GNU tar takes
// "\056" in the name of a directory for a dot.
#pragma once

#include <string>

namespace zelvo {

// Returns the name if it can be one component of a path: neither empty nor "." or "..", and without
// "/", "\" and NUL. Raises UnsafeName. what: whose name it is, for the message.
const std::string& requireComponent(const std::string& name, const std::string& what);

// Returns the path if it stays below where it is appended: it may hold "/", but is not empty, does
// not begin with "/" and has no component "..". Raises UnsafeName.
const std::string& requireDescent(const std::string& path, const std::string& what);

// Returns the name if no program takes it for an option: it does not begin with "-". Raises
// UnsafeName.
const std::string& requireNoOption(const std::string& name, const std::string& what);

}  // namespace zelvo
