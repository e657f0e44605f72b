// The search for the directories of an object's dumps.
#include <set>

#include "commons/path_steps.h"
#include "repository/object_types.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/tolerated_dir.h"

namespace zelvo {

namespace {

// The types of the objects below the server that may own one of a type, the highest first.
std::vector<std::string> ownerTypes(const std::string& type) {
    std::vector<std::string> types;
    for (const char* const owner : {"reseller", "client"}) {
        if (owner != type && HasMinorType(type, owner)) {
            types.push_back(owner);
        }
    }
    return types;
}

// Appends a directory if it is there.
void takeDir(tRepositoryTransport& transport, const std::string& dir, Paths& found) {
    toleratedDir(transport, dir, [&] {
        if (transport.IsDirExist(dir)) {
            found.push_back(dir);
        }
    });
}

// The directories of the objects of one type.
Paths objectsIn(tRepositoryTransport& transport, const std::string& groupDir) {
    Paths names;
    toleratedDir(transport, groupDir, [&] {
        if (transport.IsDirExist(groupDir)) {
            transport.ListDir(groupDir, names);
        }
    });
    Paths dirs;
    for (const std::string& name : names) {
        if (isComponent(name)) {
            takeDir(transport, joinPath(groupDir, name), dirs);
        }
    }
    return dirs;
}

// Appends the directories of all objects below dir. types: those that can stand there, the highest
// first.
void collectObjects(tRepositoryTransport& transport, const std::string& dir,
                    const std::vector<std::string>& types, Paths& found) {
    for (auto type = types.begin(); type != types.end(); ++type) {
        for (const std::string& object :
             objectsIn(transport, joinPath(dir, GetObjectTypeGroupDir(*type)))) {
            found.push_back(object);
            collectObjects(transport, object, {type + 1, types.end()}, found);
        }
    }
}

class ObjectSearch {
  public:
    ObjectSearch(tRepositoryTransport& transport, const std::string& type, const Paths& ids)
        : transport_(transport), type_(type), ids_(ids.begin(), ids.end()) {}

    // owners: types that can still be between dir and the object.
    void searchIn(const std::string& dir, const std::vector<std::string>& owners) {
        for (const std::string& group : GetObjectTypeSearchDirs(type_)) {
            for (const std::string& id : ids_) {
                takeDir(transport_, joinPath(joinPath(dir, group), id), found_);
            }
        }
        for (auto owner = owners.begin(); owner != owners.end(); ++owner) {
            searchBelow(joinPath(dir, GetObjectTypeGroupDir(*owner)), {owner + 1, owners.end()});
        }
    }

    const Paths& found() const { return found_; }

  private:
    void searchBelow(const std::string& groupDir, const std::vector<std::string>& owners) {
        for (const std::string& dir : objectsIn(transport_, groupDir)) {
            searchIn(dir, owners);
        }
    }

    tRepositoryTransport& transport_;
    const std::string& type_;
    std::set<std::string> ids_;
    Paths found_;
};

}  // namespace

Paths tRepository::searchObjectDirs(const std::string& type, const std::string& guid) {
    // The root belongs to the server, with or without an index.
    if (GetObjectTypeGroupDir(type).empty()) {
        return {""};
    }
    Paths ids;
    toleratedInWords([&] { ids = GetDiscoveredNames(*transport_, guid); }, "unknown exception",
                     [this](const std::string& reason) {
                         log("Unable to retreave object ids from central repository: " + reason);
                     });
    log("Search object dirs");
    ObjectSearch search(*transport_, type, ids);
    if (!ids.empty()) {
        search.searchIn("", ownerTypes(type));
    }
    return search.found();
}

Paths tRepository::allObjectDirs() {
    Paths found{""};
    collectObjects(*transport_, "", {"reseller", "client", "domain"}, found);
    return found;
}

}  // namespace zelvo
