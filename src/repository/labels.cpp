// The half of names.h that reads labels and prefixes out of paths.
#include <algorithm>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"

namespace zelvo {

namespace {

const std::string kXml = ".xml";
const std::string kInfo = "info_";

[[noreturn]] void refuseName(const std::string& name, const std::string& reason) {
    throw RepositoryException(EXC(RepositoryError) % ("file name '" + name + "' " + reason),
                              RepositoryOperationStatus::kBadName);
}

const std::string& requireLabel(const std::string& label, const std::string& name) {
    if (!IsLabel(label)) {
        refuseName(name, "has wrong format");
    }
    return label;
}

}  // namespace

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool IsLabel(const std::string& text) {
    return text.size() == 10 && std::all_of(text.begin(), text.end(), is_digit);
}

std::string GetDumpLabel(const std::string& path) {
    const std::string name = fileNameOf(path);
    const std::string stem = name.substr(0, name.rfind('.'));
    const auto mark = stem.rfind('_');
    if (mark == std::string::npos) {
        refuseName(name, "not contains '_'");
    }
    return requireLabel(stem.substr(mark + 1), name);
}

std::string GetInfoXmlsLabel(const std::string& path) {
    const std::string name = fileNameOf(path);
    if (!name.ends_with(kXml)) {
        throw EXC(RepositoryError) % ("file name '" + name + "' not ends with '.xml'");
    }
    const std::string stem = GetInfoXmlDir(name);
    const auto mark = stem.rfind(kInfo);
    if (mark == std::string::npos) {
        refuseName(name, "not contains 'info_'");
    }
    return requireLabel(stem.substr(mark + kInfo.size()), name);
}

std::string GetDumpPrefix(const std::string& path) {
    const std::string name = fileNameOf(path);
    return name.substr(0, name.find('_'));
}

std::string GetInfoXmlDir(const std::string& path) {
    return path.ends_with(kXml) ? path.substr(0, path.size() - kXml.size()) : path;
}

std::string GetDiscoveredDir(const std::string& path) {
    const std::string dir = GetInfoXmlDir(path);
    return joinPath(joinPath(parentOf(dir), DISCOVERED), fileNameOf(dir));
}

}  // namespace zelvo
