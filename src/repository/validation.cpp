// The half of tRepository that checks whether a structured backup is sound.
#include <algorithm>

#include "repository/discovered_items.h"
#include "repository/dump_content.h"
#include "repository/info_xml_reader.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

bool IsValidContentFile(tRepositoryTransport& transport, const std::string& path,
                        const Paths& files) {
    return std::find(files.begin(), files.end(), path) != files.end() ||
           (transport.IsExist(path) && !transport.IsDirExist(path));
}

// The first content file of a dump that is not there; empty if all are.
std::string missingContent(tRepositoryTransport& transport, tInfoXmlReader& reader,
                           const std::string& infoPath, const Paths& files) {
    for (const ContentEntry& entry : reader.ReadContent()) {
        for (const std::string& name : entry.files) {
            std::string path = contentPath(infoPath, entry, name);
            if (!IsValidContentFile(transport, path, files)) {
                return path;
            }
        }
    }
    return "";
}

}  // namespace

std::vector<ValidationResult> tRepository::ValidateBackup(const std::string& path, bool force) {
    log("Validate backup " + path);
    return ValidateBackup(path, {}, force);
}

std::vector<ValidationResult> tRepository::ValidateBackup(const std::string& path,
                                                          const Paths& files, bool force) {
    log("Validate backup (common phase) " + path);
    try {
        const Paths stored = GetDiscoveredItems(path, D_ITEM_STATUS);
        if (!stored.empty() && !force) {
            return {{GetBackupStatusVal(stored.front()), "", {}}};
        }
        const ValidationResult result = checkBackup(path, files);
        storeStatus(path, result.status);
        return {result};
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
        return {{BackupStatus::kWrongFormat,
                 std::string("unable to check xml validity: ") + failure.what(),
                 {}}};
    }
}

std::vector<ValidationResult> tRepository::peekAtStatus(const std::string& infoPath) {
    const Paths stored = GetDiscoveredItems(infoPath, D_ITEM_STATUS);
    if (!stored.empty()) {
        return {{GetBackupStatusVal(stored.front()), "", {}}};
    }
    return {checkBackup(infoPath, {})};
}

ValidationResult tRepository::checkBackup(const std::string& infoPath, const Paths& files) {
    tInfoXmlReader reader(transport_, infoPath);
    if (!reader.ValidateZelvoXsd()) {
        // A document whose envelope cannot be opened has not been seen by the schema.
        return {reader.isSignRefused() ? BackupStatus::kSignError : BackupStatus::kWrongFormat,
                "",
                {infoPath}};
    }
    const std::string missing = missingContent(*transport_, reader, infoPath, files);
    if (!missing.empty()) {
        return {BackupStatus::kContentError, "", {missing}};
    }
    if (!reader.ValidateSign()) {
        return {BackupStatus::kSignError, "", {infoPath}};
    }
    return {};
}

void tRepository::storeStatus(const std::string& infoPath, BackupStatus status) {
    const std::string word = GetBackupStatusStr(status);
    try {
        // An old verdict beside the new one would be believed as well as that.
        for (const std::string& old : GetDiscoveredItems(infoPath, D_ITEM_STATUS)) {
            if (old != word) {
                transport_->Delete(
                    joinPath(GetDiscoveredDir(infoPath), D_ITEM_STATUS + ("_" + old)));
            }
        }
        SetDiscoveredItem(infoPath, D_ITEM_STATUS, word);
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
    }
}

}  // namespace zelvo
