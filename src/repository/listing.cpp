// The half of tRepository that lists structured backups.
#include <charconv>
#include <set>

#include "report/termination_lines.h"
#include "repository/discovered_items.h"
#include "repository/info_xml_reader.h"
#include "repository/names.h"
#include "repository/object_types.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/tolerated_dir.h"

namespace zelvo {

namespace {

std::string notRetrieved(const std::string& path, const std::string& reason) {
    return "Error: unable to retreave backup info from " + path + ": " + reason;
}

void ReadPropsFromXml(tRepositoryTransport& transport, const std::string& path,
                      std::string& description) {
    LogMsg("Read properties from xml " + path);
    description = tInfoXmlReader(&transport, path).ReadDescription();
}

void GetBackupParamsFromListing(tRepositoryTransport& transport, const std::string& dir,
                                BackupInfo& info, std::string& size) {
    LogMsg("Get backup params from listing of " + dir);
    const std::pair<const char*, std::string*> items[] = {
        {D_ITEM_OWNER, &info.owner_guid},
        {D_ITEM_OWNER_TYPE, &info.owner_type},
        {D_ITEM_GUID, &info.guid},
        {D_ITEM_OBJECT_ID, &info.object_id},
        {D_ITEM_SIZE, &size},
    };
    Paths entries;
    transport.ListDir(dir, entries);
    for (const std::string& entry : entries) {
        for (const auto& [item, value] : items) {
            readDiscoveredItem(entry, item, *value);
        }
    }
}

// 0 for what is no number of bytes.
long parseSize(const std::string& text) {
    long size = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, size);
    if (error != std::errc() || rest != end || size < 0) {
        LogMsg("Unable to parse size of dump: " + text);
        return 0;
    }
    return size;
}

void completeBackupInfo(tRepositoryTransport& transport, const std::string& path,
                        BackupInfo& info) {
    SetBackupNameFromPath(path, info);
    ReadPropsFromXml(transport, path, info.description);
    SetDateFromPath(info, path);
}

}  // namespace

// A list of backups.
class BackupsLister {
  public:
    // guid, owner: of the object and its owner; empty for any.
    BackupsLister(tRepository& repository, std::string guid, const std::string& owner,
                  bool validate, std::vector<BackupInfo>& result)
        : repository_(repository),
          guid_(std::move(guid)),
          owner_(owner),
          validate_(validate),
          result_(result) {
        for (const BackupInfo& info : result) {
            listed_.insert(info.path);
        }
    }

    // Appends a dump, by the name of its discovered directory. dir: of its info document.
    void append(const std::string& dir, const std::string& name) {
        checkProgramTerminated();
        const std::string path = joinPath(dir, name + ".xml");
        const std::string items = GetDiscoveredDir(path);
        tRepositoryTransport& transport = repository_.transport();
        // Items of the index are files.
        if (listed_.contains(path) || !transport.IsDirExist(items)) {
            return;
        }
        if (!transport.IsExist(path)) {
            LogMsg("Discovered dir " + name + " exists but file " + path +
                   " not exists. Skipping.");
            return;
        }
        BackupInfo info = repository_.GetInitialBackupInfo(items);
        if ((guid_.empty() || info.guid == guid_) &&
            (owner_.empty() || info.owner_guid == owner_)) {
            completeBackupInfo(transport, path, info);
            if (validate_) {
                info.validation = repository_.ValidateBackup(path, false);
            }
            listed_.insert(path);
            result_.push_back(info);
        }
    }

  private:
    tRepository& repository_;
    std::string guid_;
    const std::string& owner_;
    bool validate_;
    std::vector<BackupInfo>& result_;
    // Paths.
    std::set<std::string> listed_;
};

BackupInfo tRepository::GetInitialBackupInfo(const std::string& discoveredDir) {
    log("Get initial backup info from dir " + discoveredDir);
    if (!transport_->IsDirExist(discoveredDir)) {
        throw EXC(RepositoryError) % ("Discovered dir '" + discoveredDir + "' not found");
    }
    BackupInfo info;
    std::string size;
    GetBackupParamsFromListing(*transport_, discoveredDir, info, size);
    info.size = parseSize(size);
    return info;
}

BackupInfo tRepository::GetBackupInfo(const std::string& path, bool validate) {
    log("Get backup info from " + path);
    BackupInfo info = GetInitialBackupInfo(GetDiscoveredDir(path));
    completeBackupInfo(*transport_, path, info);
    if (validate) {
        info.validation = ValidateBackup(path, true);
    }
    return info;
}

void tRepository::BackupsList(const std::string& type, const std::string& guid,
                              const std::string& owner, std::vector<BackupInfo>& result,
                              bool validate) {
    log("List backups of type " + type + " for guid " + guid);
    // The server has the root for itself.
    BackupsLister lister(*this, type == "server" ? "" : guid, owner, validate, result);
    listBackups(searchObjectDirs(type, guid), type, lister);
}

void tRepository::AllBackupsList(const std::string& owner, std::vector<BackupInfo>& result,
                                 bool validate) {
    log("List all backups");
    BackupsLister lister(*this, "", owner, validate, result);
    listBackups(allObjectDirs(), "object", lister);
}

void tRepository::listBackups(const Paths& dirs, const std::string& type, BackupsLister& lister) {
    for (const std::string& dir : dirs) {
        const std::string all = joinPath(dir, DISCOVERED);
        Paths names;
        toleratedDir(*transport_, all, [&] {
            if (transport_->IsDirExist(all)) {
                transport_->ListDir(all, names);
            } else {
                log("'.discovered' directory for '" + type + "' '" + fileNameOf(dir) +
                    "' not found");
            }
        });
        for (const std::string& name : names) {
            toleratedInWords(
                [&] { lister.append(dir, name); }, "unknown error",
                [&](const std::string& reason) {
                    LogError(logPrefix_ + notRetrieved(joinPath(dir, name + ".xml"), reason));
                    raiseIfLost(*transport_);
                });
        }
    }
}

std::uint64_t tRepository::GetDiskUsage(const std::string& type, const std::string& guid,
                                        const std::string& owner) {
    std::vector<BackupInfo> backups;
    BackupsList(type, guid, owner, backups);
    std::uint64_t size = 0;
    for (const BackupInfo& backup : backups) {
        size = sumOfSizes(size, static_cast<std::uint64_t>(backup.size));
    }
    return size;
}

}  // namespace zelvo
