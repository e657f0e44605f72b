#include "repository/backup_info.h"

#include <algorithm>
#include <limits>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"

namespace zelvo {

namespace {

const char* const kWords[] = {"OK", "WRONG-FORMAT", "SIGN-ERROR", "CONTENT-ERROR"};

}  // namespace

std::string GetBackupStatusStr(BackupStatus status) {
    const auto number = static_cast<std::size_t>(status);
    if (number >= std::size(kWords)) {
        throw EXC(RepositoryError) %
            ("status value incorrect: " + std::to_string(static_cast<int>(status)));
    }
    return kWords[number];
}

BackupStatus GetBackupStatusVal(const std::string& word) {
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        if (word == kWords[i]) {
            return static_cast<BackupStatus>(i);
        }
    }
    throw EXC(RepositoryError) % ("status string value incorrect: " + word);
}

std::uint64_t sumOfSizes(std::uint64_t one, std::uint64_t other) {
    return one + std::min(other, std::numeric_limits<std::uint64_t>::max() - one);
}

void SetBackupNameFromPath(const std::string& path, BackupInfo& info) {
    info.path = path;
    info.name = GetInfoXmlDir(fileNameOf(path));
}

void SetDateFromPath(BackupInfo& info, const std::string& path) {
    info.SetDateTimeStr(GetDumpLabel(path));
}

}  // namespace zelvo
