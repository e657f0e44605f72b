#include "repository/imported_files.h"

#include <algorithm>

#include "repository/discovered_items.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

[[noreturn]] void refuse(const std::string& what, const std::string& rule) {
    throw RepositoryException(EXC(RepositoryError) % ("Dump has wrong format. " + what +
                                                      "' does not match to dump " + rule + "'"),
                              RepositoryOperationStatus::kBadName);
}

void requireMatch(const std::string& what, const std::string& name, const std::string& prefix,
                  const std::string& label, bool hasLabel) {
    if (!FileMatchToPrefix(name, prefix)) {
        refuse(what, "prefix '" + prefix);
    }
    if (!hasLabel) {
        refuse(what, "label '" + label);
    }
}

// own: what stands behind a discovered directory.
void requireItem(const std::string& own) {
    requireName(own, "discovered item");
    requireName(own.substr(std::min(own.find('_'), own.size() - 1) + 1),
                "value of a discovered item");
}

}  // namespace

void CheckImportedFiles(const std::string& infoPath, const std::vector<std::string>& files,
                        const std::string& item, std::vector<std::string>& items) {
    const std::string name = fileNameOf(GetInfoXmlDir(infoPath));
    LogMsg("Check " + std::to_string(files.size()) + " exported files match to name " + name);
    const std::string prefix = GetDumpPrefix(infoPath);
    const std::string label = GetInfoXmlsLabel(infoPath);
    for (const std::string& file : files) {
        std::string before;
        std::string behind;
        std::string value;
        const std::string own = fileNameOf(file);
        if (IsAnyDiscoveredPath(file, before, behind)) {
            const std::string dir = behind.substr(0, behind.find('/'));
            if (!dir.empty()) {
                requireMatch("Discovered dir '" + dir, dir, prefix, label,
                             DirMatchToLabel(dir, label));
            }
            if (behind.size() > dir.size() + 1) {
                requireItem(behind.substr(dir.size() + 1));
            }
            if (readDiscoveredItem(own, item, value)) {
                items.push_back(file);
            }
        } else if (!file.ends_with('/')) {
            requireMatch("Archive file '" + file, own, prefix, label,
                         InfoXmlMatchToLabel(own, label) || IsContentName(own, prefix, label));
        }
    }
    LogMsg("All files match to name " + name);
}

}  // namespace zelvo
