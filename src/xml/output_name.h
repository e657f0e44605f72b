// The form in which a file name is given to libxml2 for writing.
#pragma once

#include <string>

namespace zelvo {

// Returns what stands for exactly this file name. The library takes a name that reads as a URI for
// one and undoes its %-escapes: a directory "50%25" would be sought as "50%".
std::string outputName(const std::string& fileName);

}  // namespace zelvo
