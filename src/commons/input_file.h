// The test that a file named by the caller can be read as one.
#pragma once

#include <string>

namespace zelvo {

// True if the name is not empty, exists (stat(2), links followed) and is a regular file. The flag
// has no effect.
bool check_input_file(const std::string& name, bool flag);

}  // namespace zelvo
