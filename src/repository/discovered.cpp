// The half of tRepository that keeps its index: markers at its top and items beside each dump.
#include <map>

#include "commons/path_steps.h"
#include "repository/discovered_items.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// The name of a dump's info document without ".xml".
std::string dumpName(const std::string& infoPath) {
    const std::string name = fileNameOf(infoPath);
    if (!name.ends_with(".xml")) {
        throw RepositoryException(
            EXC(RepositoryError) % ("file name '" + name + "' not ends with '.xml'"),
            RepositoryOperationStatus::kBadName);
    }
    return GetInfoXmlDir(name);
}

std::string indexItem(const std::string& guid, const std::string& objectId) {
    return requireName(guid, "GUID") + "_" + requireName(objectId, "object id");
}

void logMalformed(const std::string& entry, const std::string& guid) {
    LogMsg("index item '" + entry + "' for guid '" + guid + "' is malformed");
}

}  // namespace

void tRepository::CreateRepositoryIndex(const std::string& item) {
    log("Create repository index item " + item);
    const std::string file = joinPath(DISCOVERED, requireName(item, "index item"));
    requireDir(DISCOVERED);
    if (transport_->IsExist(file)) {
        return;
    }
    try {
        openToWrite(file)->close();
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(StreamError, failure) % ("Unable to create " + item);
    }
}

void tRepository::CreateRepositoryIndexFromImported(const Paths& files) {
    log("Create repository index from " + std::to_string(files.size()) + " imported files");
    // By the directory of the items.
    std::map<std::string, std::string> guids;
    std::map<std::string, std::string> objectIds;
    for (const std::string& file : files) {
        std::string before;
        std::string behind;
        std::string value;
        if (!IsAnyDiscoveredPath(file, before, behind)) {
            continue;
        }
        if (readDiscoveredItem(fileNameOf(file), D_ITEM_GUID, value)) {
            guids[parentOf(file)] = value;
        } else if (readDiscoveredItem(fileNameOf(file), D_ITEM_OBJECT_ID, value)) {
            objectIds[parentOf(file)] = value;
        }
    }
    for (const auto& [dir, guid] : guids) {
        if (objectIds.contains(dir)) {
            CreateRepositoryIndex(indexItem(guid, objectIds[dir]));
        } else {
            log("Object id for object guid '" + guid + "' not found. Skipping.");
        }
    }
}

void tRepository::CreateDiscovered(const std::string& path, const std::string& name, long size,
                                   const std::string& owner, const std::string& ownerType,
                                   const std::string& guid, const std::string& objectId) {
    log("Create discovered " + name + " at path " + path);
    const std::string index = indexItem(guid, objectId);
    const std::pair<const char*, std::string> items[] = {
        {D_ITEM_SIZE, std::to_string(size)}, {D_ITEM_OWNER, owner},
        {D_ITEM_OWNER_TYPE, ownerType},      {D_ITEM_GUID, guid},
        {D_ITEM_OBJECT_ID, objectId},
    };
    Paths files;
    for (const auto& [item, value] : items) {
        files.push_back(requireName(item + ("_" + value), "discovered item"));
    }
    const std::string dir = makeDiscoveredDir(path, name);
    for (const std::string& file : files) {
        PutInfo(joinPath(dir, file), "");
    }
    CreateRepositoryIndex(index);
}

void tRepository::SetDiscoveredItem(const std::string& path, const std::string& name,
                                    const std::string& item, const std::string& value) {
    log("Create item '" + item + "_" + value + "' for discovered '" + name + "' at path " + path);
    const std::string itemFile = requireName(item, "item") + "_" + requireName(value, item);
    const std::string file = joinPath(makeDiscoveredDir(path, name), itemFile);
    if (!transport_->IsExist(file)) {
        PutInfo(file, "");
    }
}

void tRepository::SetDiscoveredItem(const std::string& infoPath, const std::string& item,
                                    const std::string& value) {
    SetDiscoveredItem(parentOf(infoPath), dumpName(infoPath), item, value);
}

Paths tRepository::GetDiscoveredItems(const std::string& path, const std::string& name,
                                      const std::string& item) {
    log("Get items '" + item + "' for discovered '" + name + "' at path " + path);
    const std::string all = joinPath(path, DISCOVERED);
    const std::string dir = joinPath(all, requireName(name, "dump"));
    Paths values;
    if (!transport_->IsDirExist(all) || !transport_->IsDirExist(dir)) {
        return values;
    }
    Paths entries;
    transport_->ListDir(dir, entries);
    for (const std::string& entry : entries) {
        std::string value;
        if (readDiscoveredItem(entry, item, value)) {
            values.push_back(value);
        }
    }
    return values;
}

Paths tRepository::GetDiscoveredItems(const std::string& infoPath, const std::string& item) {
    return GetDiscoveredItems(parentOf(infoPath), dumpName(infoPath), item);
}

Paths tRepository::GetDiscoveredNames(tRepositoryTransport& transport, const std::string& guid) {
    LogMsg("Get discovered names");
    if (!transport.IsDirExist(DISCOVERED)) {
        LogMsg("directory '.discovered' at top level not found");
        return {};
    }
    Paths entries;
    transport.ListDir(DISCOVERED, entries);
    Paths objectIds;
    bool isIndexed = false;
    for (const std::string& entry : entries) {
        std::string id;
        if (!readDiscoveredItem(entry, guid, id)) {
            continue;
        }
        isIndexed = true;
        if (!isComponent(id)) {
            logMalformed(entry, guid);
        } else {
            objectIds.push_back(id);
        }
    }
    if (!isIndexed) {
        LogMsg("index item for guid '" + guid + "' not found");
    }
    return objectIds;
}

void tRepository::requireDir(const std::string& path) {
    if (!transport_->IsDirExist(path)) {
        CreateDir(path);
    }
}

std::string tRepository::makeDiscoveredDir(const std::string& path, const std::string& name) {
    const std::string all = joinPath(path, DISCOVERED);
    std::string dir = joinPath(all, requireName(name, "dump"));
    requireDir(all);
    requireDir(dir);
    return dir;
}

}  // namespace zelvo
