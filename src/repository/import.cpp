// The half of tRepository that turns an archive into a structured backup.
#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <set>

#include "repository/archive_extraction.h"
#include "repository/archive_listing.h"
#include "repository/archive_volumes.h"
#include "repository/discovered_items.h"
#include "repository/file_parts.h"
#include "repository/imported_files.h"
#include "repository/info_xml_reader.h"
#include "repository/names.h"
#include "repository/new_entries.h"
#include "repository/object_types.h"
#include "repository/packed_info.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

namespace {

[[noreturn]] void refuse(const std::string& reason) {
    throw ImportException(EXC(ImportError) % reason, DumpImportStatus::kNew);
}

// What an import needs to know of an archive.
struct PackedDump {
    // The members.
    Paths files;
    std::string infoName;
    // Of the object.
    std::string type;
    // The discovered items of the object's own.
    Paths items;
};

// archive: its name, for messages.
PackedDump readPackedDump(const Paths& volumes, const std::string& archive) {
    PackedDump dump;
    dump.files = ListPlainArchive(volumes);
    const TempDirGuard itemsDir;
    const TempDirGuard topDir;
    Paths items;
    ExtractArchiveSubDir(volumes, itemsDir.path(), DISCOVERED, items);
    Paths topFiles;
    ExtractArchiveRoot(volumes, topDir.path(), topFiles);
    dump.infoName = FindPackedInfo(topFiles, archive);
    const std::string own = GetDiscoveredDir(dump.infoName) + "/";
    std::copy_if(items.begin(), items.end(), std::back_inserter(dump.items),
                 [&](const std::string& item) { return item.starts_with(own); });
    const auto transport = tRepositoryTransport::Get(topDir.path());
    tInfoXmlReader reader(transport.get(), dump.infoName);
    reader.ReadObject();
    dump.type = reader.object_type();
    return dump;
}

// The one value of an item. what: the item's name for people.
std::string onlyValue(const Paths& items, const char* item, const std::string& what) {
    std::string value;
    if (std::count_if(items.begin(), items.end(), [&](const std::string& path) {
            return readDiscoveredItem(fileNameOf(path), item, value);
        }) > 1) {
        refuse("Dump has more than one " + what);
    }
    return value;
}

// Where the dump goes in a repository.
std::string destinationOf(const PackedDump& dump) {
    const std::string group = GetObjectTypeGroupDir(dump.type);
    if (group.empty()) {
        return "";
    }
    onlyValue(dump.items, D_ITEM_OBJECT_ID, "object id");
    return joinPath(group, GetObjectId(dump.items));
}

// Refuses a dump that would come among those of another object: the id is what the archive says.
// Dumps without a GUID tell nothing.
void requireOwnId(tRepositoryTransport& transport, const std::string& dest, const Paths& items) {
    const std::string guid = onlyValue(items, D_ITEM_GUID, "guid");
    const std::string dumps = joinPath(dest, DISCOVERED);
    if (dest.empty() || !transport.IsDirExist(dumps)) {
        return;
    }
    Paths names;
    transport.ListDir(dumps, names);
    bool isAnothers = false;
    for (const std::string& name : names) {
        Paths entries;
        if (transport.IsDirExist(joinPath(dumps, name))) {
            transport.ListDir(joinPath(dumps, name), entries);
        }
        std::string other;
        for (const std::string& entry : entries) {
            readDiscoveredItem(entry, D_ITEM_GUID, other);
        }
        if (!other.empty() && other == guid) {
            return;
        }
        isAnothers = isAnothers || !other.empty();
    }
    if (isAnothers) {
        throw ImportException(
            EXC(ImportError) % ("Object id '" + fileNameOf(dest) + "' is that of another object"),
            DumpImportStatus::kOfAnotherOwner);
    }
}

// The archiver is kept from going through links, and would stop in the middle.
void requireNoLinks(tRepositoryTransport& transport, const std::string& dest, const Paths& files) {
    std::set<std::string> dirs;
    for (const std::string& file : files) {
        for (auto end = file.find('/'); end != std::string::npos; end = file.find('/', end + 1)) {
            dirs.insert(file.substr(0, end));
        }
    }
    for (const std::string& below : dirs) {
        if (transport.IsLink(joinPath(dest, below))) {
            refuse("'" + joinPath(dest, below) + "' is a link");
        }
    }
}

}  // namespace

DumpImportResult tRepository::ImportFromRepo(tRepository& source, const std::string& path,
                                             const std::string& ownerType,
                                             const std::string& ownerGuid) {
    LogStep(logPrefix_ + "Import from " + source.place() + "/" + path);
    try {
        const Paths parts = GetFileParts(source.transport(), path);
        const PackedDump dump =
            readPackedDump(bringVolumes(source.transport(), parts), fileNameOf(path));
        const std::string dest = destinationOf(dump);
        const std::string infoPath = joinPath(dest, dump.infoName);
        if (transport_->IsExist(infoPath)) {
            return {infoPath, DumpImportStatus::kAlreadyThere};
        }
        CheckObjectType(dump.type, ownerType);
        CheckObjectGuid(dump.items, ownerGuid);
        requireOwnId(*transport_, dest, dump.items);
        Paths statuses;
        CheckImportedFiles(dump.infoName, dump.files, D_ITEM_STATUS, statuses);
        requireNoLinks(*transport_, dest, dump.files);
        noteImport(dest, dump.files);
        finishImport(dest, dump.infoName,
                     source.unpackNoted(parts, *this, dest, {}, MemberAttributes::kDropped));
        return {infoPath, DumpImportStatus::kNew};
    } catch (const Exc<&TransportError>& failure) {
        LogMsg(failure);
        throw;
    }
}

// Before the first byte: an archive that cannot be unpacked to its end leaves files as well.
void tRepository::noteImport(const std::string& dest, const Paths& files) {
    NewEntries entries(*transport_);
    for (const std::string& file : files) {
        const std::string inTheWay = entries.note(joinPath(dest, file));
        if (!inTheWay.empty()) {
            refuse("file '" + inTheWay + "' exists");
        }
    }
    AddFilesToTransaction("", entries.made());
}

void tRepository::finishImport(const std::string& dest, const std::string& infoName,
                               const Paths& files) {
    log(boost::join(files, ", "));
    Paths statuses;
    CheckImportedFiles(infoName, files, D_ITEM_STATUS, statuses);
    // The verdict of another machine.
    log("Found files to delete: " + boost::join(statuses, ", "));
    for (const std::string& status : statuses) {
        transport_->Delete(joinPath(dest, status));
    }
    CreateRepositoryIndexFromImported(files);
}

DumpImportResult tRepository::Import(const std::string& url, const std::string& password,
                                     bool passive, const std::string& ownerType,
                                     const std::string& ownerGuid) {
    std::string name;
    const std::unique_ptr<tRepository> source = GetFileRepository(url, password, passive, name);
    return ImportFromRepo(*source, name, ownerType, ownerGuid);
}

}  // namespace zelvo
