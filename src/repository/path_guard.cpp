#include "repository/path_guard.h"

#include <algorithm>
#include <sstream>

#include "commons/path_steps.h"
#include "repository/repository_errors.h"

namespace zelvo {

namespace {

[[noreturn]] void refusePath(const std::string& path, const char* reason) {
    throw TransportException(EXC(TransportError) % ("Path '" + path + "' is refused: " + reason),
                             TransportOperationStatus::kUnspecified);
}

}  // namespace

std::string relativePath(const std::string& path) {
    // Of what is left: behind the "\" of "\../x" stands a step that was none before.
    std::string relative = path.substr(std::min(path.find_first_not_of("/\\"), path.size()));
    if (hasParentStep(relative)) {
        refusePath(path, "it leads to another place");
    }
    if (path.find_first_of(std::string("\0\r\n", 3)) != std::string::npos) {
        refusePath(path, "it holds a control character");
    }
    return relative;
}

std::string normalPath(const std::string& path) {
    std::string normal;
    std::istringstream components(relativePath(path));
    for (std::string component; std::getline(components, component, '/');) {
        if (!component.empty() && component != ".") {
            normal = joinPath(normal, component);
        }
    }
    return normal;
}

const std::string& requireInside(const std::string& path) {
    if (normalPath(path).empty()) {
        refusePath(path, "it is the whole repository");
    }
    return path;
}

std::string removablePath(const std::string& path) {
    std::string removable = requireInside(path);
    while (removable.ends_with('/') || removable.ends_with("/.")) {
        removable.pop_back();
    }
    return removable;
}

std::string joinPath(const std::string& dir, const std::string& name) {
    return dir.empty() || dir.ends_with('/') ? dir + name : dir + "/" + name;
}

std::string fileNameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string parentOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

bool hasControlCharacter(const std::string& text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

bool isEntryName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           !hasControlCharacter(name);
}

const std::string& requireName(const std::string& value, const std::string& what) {
    if (!isComponent(value) || hasControlCharacter(value)) {
        throw RepositoryException(
            EXC(RepositoryError) % (what + " '" + value + "' is no single component of a path"),
            RepositoryOperationStatus::kBadName);
    }
    return value;
}

}  // namespace zelvo
