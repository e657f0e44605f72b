// What a repository tells of one backup.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "repository/creation_date.h"

namespace zelvo {

// Whether a backup is sound.
enum class BackupStatus { kOk = 0, kWrongFormat = 1, kSignError = 2, kContentError = 3 };

// The word of a status and back: "OK", "WRONG-FORMAT", "SIGN-ERROR", "CONTENT-ERROR". Raise
// RepositoryError for what is none.
std::string GetBackupStatusStr(BackupStatus status);
BackupStatus GetBackupStatusVal(const std::string& word);

struct ValidationResult {
    BackupStatus status = BackupStatus::kOk;
    std::string message;
    // The files that are concerned.
    std::vector<std::string> files;
};

struct BackupInfo : CreationDateMixin {
    // Of the file, without ".xml".
    std::string name;
    // Of the info document, or of the archive.
    std::string path;
    std::string owner_guid;
    std::string owner_type;
    // In bytes.
    long size = 0;
    std::string object_id;
    std::string guid;
    std::string description;
    std::vector<ValidationResult> validation;
};

// The sum of two sizes in bytes; the greatest number for one that is greater. What servers and
// imported dumps tell is any number.
std::uint64_t sumOfSizes(std::uint64_t one, std::uint64_t other);

// Fills name and path. path: of the info document or the archive.
void SetBackupNameFromPath(const std::string& path, BackupInfo& info);

// The label of the path becomes the date. Raises RepositoryError for one that is none.
void SetDateFromPath(BackupInfo& info, const std::string& path);

}  // namespace zelvo
