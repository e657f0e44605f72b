// What a name or a path may be made of where others chose it.
#pragma once

#include <string>

namespace zelvo {

// True for what can be one component of a path: neither empty nor "." or "..", and without "/", "\"
// and NUL.
bool isComponent(const std::string& name);

// True when one of the path's components is "..".
bool hasParentStep(const std::string& path);

}  // namespace zelvo
