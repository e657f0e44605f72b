// Where a program is looked for.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The paths that execvp tries for a program, in order, so that the search needs nothing of the
// library any more. utility: a path, or a name without a slash to be looked for. searchPath: the
// value of PATH that counts, null when it is not set. Empty when there is nothing to try.
std::vector<std::string> programCandidates(const std::string& utility, const char* searchPath);

}  // namespace zelvo
