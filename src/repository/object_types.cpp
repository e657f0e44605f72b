#include "repository/object_types.h"

#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

struct ObjectType {
    const char* name;
    int level;
    const char* groupDir;
    std::vector<std::string> searchDirs;
};

// The row of a type; null for what is none.
const ObjectType* findType(const std::string& name) {
    static const ObjectType kTypes[] = {
        {"server", 10, "", {}},
        {"reseller", 9, "resellers", {"resellers", "clients"}},
        {"client", 8, "clients", {"clients"}},
        {"domain", 7, "domains", {"domains"}},
    };
    for (const ObjectType& type : kTypes) {
        if (name == type.name) {
            return &type;
        }
    }
    return nullptr;
}

const ObjectType& requireType(const std::string& name) {
    const ObjectType* const type = findType(name);
    if (type == nullptr) {
        throw RepositoryException(EXC(RepositoryError) % ("unexpected object type '" + name + "'"),
                                  RepositoryOperationStatus::kBadName);
    }
    return *type;
}

}  // namespace

std::string GetObjectTypeGroupDir(const std::string& type) { return requireType(type).groupDir; }

std::vector<std::string> GetObjectTypeSearchDirs(const std::string& type) {
    return requireType(type).searchDirs;
}

bool HasMinorType(const std::string& type, const std::string& other) {
    const ObjectType* const own = findType(type);
    const ObjectType* const bound = findType(other);
    return own != nullptr && bound != nullptr && own->level <= bound->level;
}

void CheckObjectType(const std::string& type, const std::string& expected) {
    LogMsg("Checking dump type match to " + expected);
    if (!HasMinorType(type, expected)) {
        throw ImportException(EXC(ImportError) % (" Dump does not match to type " + expected),
                              DumpImportStatus::kOfAnotherOwner);
    }
}

}  // namespace zelvo
