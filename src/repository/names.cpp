#include "repository/names.h"

#include <algorithm>
#include <boost/regex.hpp>
#include <charconv>
#include <iterator>
#include <set>

#include "repository/repository_log.h"

namespace zelvo {

bool FileMatchToPrefix(const std::string& name, const std::string& prefix) {
    return name.starts_with(prefix + "_");
}

bool DiscoveredMatchToLabel(const std::string& name, const std::string& label) {
    return name.ends_with("info_" + label);
}

bool InfoXmlMatchToLabel(const std::string& name, const std::string& label) {
    return name.ends_with("info_" + label + ".xml");
}

bool DirMatchToLabel(const std::string& name, const std::string& label) {
    return name.ends_with("_" + label);
}

bool FileMatchToLabel(const std::string& name, const std::string& label) {
    const std::string mark = "_" + label + ".";
    const auto found = name.rfind(mark);
    return found != std::string::npos && found + mark.size() - 1 == name.rfind('.');
}

bool IsContentName(const std::string& name, const std::string& prefix, const std::string& label) {
    return FileMatchToPrefix(name, prefix) &&
           FileMatchToLabel(name.substr(prefix.size() + 1), label);
}

bool IsSplittedPart(const std::string& base, const std::string& name, unsigned& number) {
    if (!name.starts_with(base)) {
        return false;
    }
    if (name.size() == base.size()) {
        number = 0;
        return true;
    }
    unsigned value = 0;
    const char* const end = name.data() + name.size();
    const auto [rest, error] = std::from_chars(name.data() + base.size(), end, value);
    if (error != std::errc() || rest != end) {
        return false;
    }
    number = value;
    return true;
}

bool IsFtpDumpName(const std::string& name) {
    static const boost::regex kDumpName("^.*_[0-9]{10}\\.(tar|tgz)$");
    LogMsg("Matching name '" + name + "' to ftp dumps naming rule.");
    return boost::regex_match(name, kDumpName);
}

bool PathBeginsWith(const std::string& parent, const std::string& path) {
    return path == parent || path.starts_with(parent + "/");
}

bool IsAnyDiscoveredPath(const std::string& path, std::string& before, std::string& behind) {
    const std::string component = std::string("/") + DISCOVERED + "/";
    const std::string framed = "/" + path + "/";
    const auto found = framed.find(component);
    if (found == std::string::npos) {
        return false;
    }
    const auto end = found + component.size();
    before = found == 0 ? "" : framed.substr(1, found - 1);
    behind = end == framed.size() ? "" : framed.substr(end, framed.size() - 1 - end);
    return true;
}

bool IsDiscoveredPath(const std::string& path, const std::string& label, std::string& before,
                      std::string& behind) {
    std::string front;
    std::string back;
    if (!IsAnyDiscoveredPath(path, front, back) ||
        !DiscoveredMatchToLabel(back.substr(0, back.find('/')), label)) {
        return false;
    }
    before = front;
    behind = back;
    return true;
}

std::vector<std::string> SortPaths(std::vector<std::string> paths) {
    const std::set<std::string> all(paths.begin(), paths.end());
    // Not the neighbour alone: between "a" and "a/c" stands "a.b".
    const auto hasParent = [&](const std::string& path) {
        for (auto slash = path.find('/'); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            if (all.contains(path.substr(0, slash))) {
                return true;
            }
        }
        return false;
    };
    paths.clear();
    std::remove_copy_if(all.begin(), all.end(), std::back_inserter(paths), hasParent);
    return paths;
}

}  // namespace zelvo
