// Making a local directory for what a repository sends or unpacks.
#pragma once

#include <string>

namespace zelvo {

// Makes the directory and its missing parents. Returns false, with the reason in the log, when that
// fails; never raises.
bool SafeCreateDir(const std::string& path);

}  // namespace zelvo
