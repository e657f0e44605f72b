// The half of tRepository that turns an archive into a structured backup.
#include <algorithm>
#include <boost/algorithm/string/join.hpp>

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

// Where the dump goes in a repository.
std::string destinationOf(const PackedDump& dump) {
    const std::string group = GetObjectTypeGroupDir(dump.type);
    if (group.empty()) {
        return "";
    }
    std::string id;
    if (std::count_if(dump.items.begin(), dump.items.end(), [&](const std::string& item) {
            return readDiscoveredItem(fileNameOf(item), D_ITEM_OBJECT_ID, id);
        }) > 1) {
        refuse("Dump has more than one object id");
    }
    return joinPath(group, GetObjectId(dump.items));
}

// Refuses a dump that would come among those of another object: the id is what the archive says.
void requireOwnId(tRepositoryTransport& transport, const std::string& dest, const Paths& items) {
    if (dest.empty() || !transport.IsDirExist(dest) || !transport.IsDirExist(DISCOVERED)) {
        return;
    }
    Paths index;
    transport.ListDir(DISCOVERED, index);
    const std::string id = fileNameOf(dest);
    const auto isOfId = [&](const std::string& entry) { return entry.ends_with("_" + id); };
    const auto isOwn = [&](const std::string& entry) {
        return std::any_of(items.begin(), items.end(), [&](const std::string& item) {
            return fileNameOf(item) + "_" + id == std::string(D_ITEM_GUID) + "_" + entry;
        });
    };
    if (std::any_of(index.begin(), index.end(), isOfId) &&
        std::none_of(index.begin(), index.end(), isOwn)) {
        throw ImportException(
            EXC(ImportError) % ("Object id '" + id + "' is that of another object"),
            DumpImportStatus::kOfAnotherOwner);
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
