#include "repository/new_entries.h"

#include <algorithm>
#include <climits>

#include "repository/path_guard.h"

namespace zelvo {

std::string NewEntries::note(const std::string& path) {
    if (path.size() >= PATH_MAX) {
        // No file system makes it.
        return "";
    }
    std::string entry = normalPath(path);
    if (entry.empty() || path.ends_with('/')) {
        return noteDir(entry);
    }
    std::string inTheWay = noteDir(parentOf(entry));
    if (!inTheWay.empty() || new_.contains(entry)) {
        return inTheWay;
    }
    if (isListed(entry)) {
        return entry;
    }
    new_.insert(entry);
    made_.push_back(entry);
    return "";
}

std::string NewEntries::noteDir(const std::string& dir) {
    for (std::size_t end = 0; end < dir.size();) {
        end = std::min(dir.find('/', end + 1), dir.size());
        std::string upper = dir.substr(0, end);
        if (there_.contains(upper) || new_.contains(upper)) {
            continue;
        }
        if (!new_.contains(parentOf(upper)) && transport_.IsDirExist(upper)) {
            there_.insert(upper);
        } else if (isListed(upper)) {
            return upper;
        } else {
            new_.insert(upper);
            made_.push_back(upper + "/");
        }
    }
    return "";
}

bool NewEntries::isListed(const std::string& path) {
    const std::string dir = parentOf(path);
    if (new_.contains(dir)) {
        return false;
    }
    const auto [listing, isFirst] = listings_.try_emplace(dir);
    if (isFirst && transport_.IsDirExist(dir)) {
        std::vector<std::string> names;
        transport_.ListDir(dir, names);
        listing->second.insert(names.begin(), names.end());
    }
    return listing->second.contains(fileNameOf(path));
}

}  // namespace zelvo
