#include "exec/program_path.h"

#include <string_view>

namespace zelvo {

namespace {

// What the C library searches when PATH is not set (confstr of _CS_PATH).
constexpr std::string_view kDefaultSearchPath = "/bin:/usr/bin";

std::string joinPath(std::string_view directory, const std::string& name) {
    return std::string(directory).append("/").append(name);
}

}  // namespace

std::vector<std::string> programCandidates(const std::string& utility, const char* searchPath) {
    if (utility.empty()) {
        return {};
    }
    if (utility.find('/') != std::string::npos) {
        return {utility};
    }
    std::string_view rest = searchPath != nullptr ? searchPath : kDefaultSearchPath;
    std::vector<std::string> candidates;
    for (;;) {
        const std::size_t end = rest.find(':');
        const std::string_view directory = rest.substr(0, end);
        // An empty element is the current directory.
        candidates.push_back(directory.empty() ? utility : joinPath(directory, utility));
        if (end == std::string_view::npos) {
            return candidates;
        }
        rest.remove_prefix(end + 1);
    }
}

}  // namespace zelvo
