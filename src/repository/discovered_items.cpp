#include "repository/discovered_items.h"

#include <algorithm>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"

namespace zelvo {

bool readDiscoveredItem(const std::string& name, const std::string& item, std::string& value) {
    if (!FileMatchToPrefix(name, item)) {
        return false;
    }
    value = name.substr(item.size() + 1);
    return true;
}

std::string GetObjectId(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        std::string id;
        if (readDiscoveredItem(fileNameOf(file), D_ITEM_OBJECT_ID, id)) {
            // It becomes a directory of the repository.
            return requireName(id, "object id");
        }
    }
    throw EXC(RepositoryError) % " Dump not have object id";
}

void CheckObjectGuid(const std::vector<std::string>& files, const std::string& guid) {
    const auto tells = [&](const std::string& file) {
        std::string before;
        std::string behind;
        const std::string name = fileNameOf(file);
        return IsAnyDiscoveredPath(file, before, behind) &&
               (name == std::string(D_ITEM_OWNER) + "_" + guid ||
                name == std::string(D_ITEM_GUID) + "_" + guid);
    };
    if (std::none_of(files.begin(), files.end(), tells)) {
        throw ImportException(EXC(ImportError) % (" Dump does not match to guid " + guid),
                              DumpImportStatus::kOfAnotherOwner);
    }
}

}  // namespace zelvo
