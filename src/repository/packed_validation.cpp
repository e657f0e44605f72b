// The half of tRepository that checks packed backups.
#include "repository/archive_listing.h"
#include "repository/archive_volumes.h"
#include "repository/file_parts.h"
#include "repository/packed_info.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

std::vector<ValidationResult> tRepository::ValidatePackedBackup(const std::string& path) {
    log("Validate packed backup " + path);
    return GetPackedBackupProps(path);
}

std::vector<ValidationResult> tRepository::GetPackedBackupProps(const std::string& path) {
    log("Get packed backup properties from " + path);
    try {
        const Paths parts = GetFileParts(*transport_, path);
        // A link in it would have the check read and write in another place.
        Paths topFiles = ListPlainArchive(bringVolumes(*transport_, parts));
        std::erase_if(topFiles,
                      [](const std::string& file) { return file.find('/') != std::string::npos; });
        // What an import would not take is no backup.
        const std::string info = FindPackedInfo(topFiles, fileNameOf(path));
        const TempDirGuard dir;
        tRepository unpacked(dir.path(), "", "", "", false);
        UnpackToRepo(parts, unpacked, "", {}, MemberAttributes::kDropped);
        // The archive may bring along a verdict of its own.
        return unpacked.ValidateBackup(info, true);
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
        return {{BackupStatus::kWrongFormat, failure.what(), {path}}};
    }
}

}  // namespace zelvo
