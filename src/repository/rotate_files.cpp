// The rotation of packed backups.
#include <algorithm>
#include <map>
#include <set>

#include "repository/dump_content.h"
#include "repository/file_parts.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/rotation.h"
#include "repository/tolerated.h"

namespace zelvo {

namespace {

constexpr std::size_t kLabelSize = 10;

// The name of packed backups without their label.
struct BackupMask {
    explicit BackupMask(const std::string& mask)
        : prefix(mask.substr(0, mask.rfind('.'))), extension(mask.substr(prefix.size())) {}

    // Where the extension of a name stands; npos for a name that does not end in it and the number
    // of a part.
    std::size_t findExtension(const std::string& name) const {
        const auto found = extension.empty() ? std::min(prefix.size() + 1 + kLabelSize, name.size())
                                             : name.rfind(extension);
        unsigned number = 0;
        const bool fits = found != std::string::npos &&
                          IsSplittedPart(name.substr(0, found) + extension, name, number);
        return fits ? found : std::string::npos;
    }

    // With the dot; empty if there is none.
    std::string prefix;
    std::string extension;
};

// Puts the files of one backup together.
class FoundBackups {
  public:
    FoundBackups(tRepositoryTransport& transport, const std::string& dir, const BackupMask& mask)
        : transport_(transport), content_(transport), dir_(dir), mask_(mask) {
        transport.ListDir(dir, names_);
    }

    // Returns why a file is none of a backup; empty for one that is.
    std::string refuse(const std::string& name) {
        const auto end = mask_.findExtension(name);
        if (end == std::string::npos || !isFile(name)) {
            return "does not satisfy mask";
        }
        const std::string stem = name.substr(0, end);
        const std::string label = stem.substr(std::min(mask_.prefix.size() + 1, stem.size()));
        if (!FileMatchToPrefix(stem, mask_.prefix) || !IsLabel(label)) {
            return "has invalid rotation prefix '" + mask_.prefix + "'";
        }
        std::string reason = whyForeign(stem, name);
        if (reason.empty()) {
            byLabel_[label].insert(name);
        }
        return reason;
    }

    // A part without the archive that it belongs to makes no backup.
    std::vector<PrefixFileList> whole() const {
        std::vector<PrefixFileList> backups;
        for (const auto& [label, files] : byLabel_) {
            const std::string archive = mask_.prefix + "_" + label + mask_.extension;
            if (files.contains(archive)) {
                // Before its parts in the order of bytes, too.
                backups.push_back({label, {files.begin(), files.end()}});
            }
        }
        return backups;
    }

  private:
    // Why a file may be of something else; empty for one that is not.
    std::string whyForeign(const std::string& stem, const std::string& name) {
        std::string reason;
        toleratedInWords(
            [&] {
                if (IsPartOfArchive(transport_, joinPath(dir_, stem + mask_.extension))) {
                    reason = "is part of another archive";
                } else if (content_.holds(joinPath(dir_, name))) {
                    reason = "is content of a structured backup";
                }
            },
            "unknown error", [&](const std::string& told) { reason = "is left: " + told; });
        return reason;
    }

    // A long listing of FTP shows of a name with blanks what is behind the last one: that would
    // count as a backup and push out one that is there.
    bool isFile(const std::string& name) const {
        return std::find(names_.begin(), names_.end(), name) != names_.end() &&
               !transport_.IsDirExist(joinPath(dir_, name));
    }

    tRepositoryTransport& transport_;
    StructuredContent content_;
    const std::string& dir_;
    const BackupMask& mask_;
    Paths names_;
    std::map<std::string, std::set<std::string>> byLabel_;
};

}  // namespace

void tRepository::RotateFileBackup(const std::string& dir, const std::string& mask, int keep) {
    LogStep(logPrefix_ + "Rotate file backups is started");
    requireRotationCount(keep);
    const std::vector<PrefixFileList> backups = findPackedBackups(dir, mask);
    removeOldest(
        backups, keep, "Rotation: ", [this](const std::string& line) { log(line); },
        [&](const std::string& name) { DeletePackedBackup(joinPath(dir, name)); });
    log("Rotate file backups is finished");
}

std::vector<RotationDecision> tRepository::PlanFileRotation(const std::string& dir,
                                                            const std::string& mask, int keep) {
    requireRotationCount(keep);
    return planRotation(findPackedBackups(dir, mask), keep);
}

std::vector<PrefixFileList> tRepository::findPackedBackups(const std::string& dir,
                                                           const std::string& mask) {
    const BackupMask parts(mask);
    log("Find list of backups by mask '" + parts.prefix + "_YYMMDDHHMM" + parts.extension + "*'");
    log("List files from " + dir);
    std::vector<FileInfo> entries;
    transport_->ListDirEx(dir, entries);
    FoundBackups found(*transport_, dir, parts);
    for (const FileInfo& entry : entries) {
        const std::string reason = found.refuse(entry.name);
        if (!reason.empty()) {
            log("Rotation: the file '" + entry.name + "' " + reason);
        }
    }
    std::vector<PrefixFileList> backups = found.whole();
    for (const PrefixFileList& backup : backups) {
        log("Found backup: '" + backup.label + "', file '" + backup.files.front() + "'");
    }
    return backups;
}

}  // namespace zelvo
