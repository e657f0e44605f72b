#include "commons/path_steps.h"

namespace zelvo {

bool isComponent(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string("/\\\0", 3)) == std::string::npos;
}

bool hasParentStep(const std::string& path) {
    return ("/" + path + "/").find("/../") != std::string::npos;
}

}  // namespace zelvo
