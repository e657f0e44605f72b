#include "content/unsafe_name.h"

#include "commons/path_steps.h"
#include "content/content_errors.h"

namespace zelvo {

namespace {

const std::string kNul(1, '\0');

}  // namespace

const std::string& requireComponent(const std::string& name, const std::string& what) {
    if (!isComponent(name)) {
        throw EXC(UnsafeName) % name % what % "it is no single component of a path";
    }
    return name;
}

const std::string& requireDescent(const std::string& path, const std::string& what) {
    if (path.empty() || path.starts_with('/') || hasParentStep(path) ||
        path.find_first_of("\\" + kNul) != std::string::npos) {
        throw EXC(UnsafeName) % path % what % "it leads to another place";
    }
    return path;
}

const std::string& requireNoOption(const std::string& name, const std::string& what) {
    if (name.starts_with('-')) {
        throw EXC(UnsafeName) % name % what % "it looks like an option";
    }
    return name;
}

}  // namespace zelvo
