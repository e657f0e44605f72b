#include "restorectl/described_backup.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "repository/dump_owner.h"
#include "repository/file_parts.h"

namespace zelvo {

bool isStructured(const std::string& path) { return path.ends_with(".xml"); }

std::string dateOf(const CreationDateMixin& date) {
    const std::time_t time = date.GetDateTime();
    std::tm parts = {};
    std::array<char, 20> text = {};
    if (time == 0 || localtime_r(&time, &parts) == nullptr ||
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts) == 0) {
        return "";
    }
    return text.data();
}

std::string verdictOf(const std::vector<ValidationResult>& results) {
    std::string text;
    for (const ValidationResult& result : results) {
        text += (text.empty() ? "" : "; ") + GetBackupStatusStr(result.status);
        if (!result.message.empty()) {
            text += ": " + result.message;
        }
        for (const std::string& file : result.files) {
            text += " ";
            text += file;
        }
    }
    return text;
}

bool isSound(const std::vector<ValidationResult>& results) {
    return std::all_of(results.begin(), results.end(), [](const ValidationResult& result) {
        return result.status == BackupStatus::kOk;
    });
}

bool isChecked(const std::vector<ValidationResult>& results) {
    return std::all_of(results.begin(), results.end(),
                       [](const ValidationResult& result) { return result.message.empty(); });
}

void sortByDate(std::vector<BackupInfo>& backups) {
    std::sort(backups.begin(), backups.end(), [](const BackupInfo& a, const BackupInfo& b) {
        return std::pair(a.GetDateTime(), a.path) < std::pair(b.GetDateTime(), b.path);
    });
}

Paths filesOf(tRepository& repository, const std::string& path) {
    if (!isStructured(path)) {
        return GetFileParts(repository.transport(), path);
    }
    DumpFiles found = FindDumpFiles(repository.transport(), path);
    found.files.insert(found.files.end(), found.discovered.begin(), found.discovered.end());
    std::sort(found.files.begin(), found.files.end());
    return found.files;
}

}  // namespace zelvo
