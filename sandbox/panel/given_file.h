// Files that a utility is given by their names.
#pragma once

#include <string>

namespace sandbox {

// The content of a file; throws Refusal when there is none.
std::string readGiven(const std::string& path);

// The same of one that only the panel's own user may read: a secret that others could read for a
// moment is none any more.
std::string readSecret(const std::string& path);

}  // namespace sandbox
