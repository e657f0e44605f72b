// The rotation of structured backups.
#include <algorithm>

#include "repository/discovered_items.h"
#include "repository/dump_owner.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/rotation.h"
#include "repository/tolerated.h"

namespace zelvo {

namespace {

// The label of an info document with the prefix. Returns an empty one for any other name, with the
// reason in refusal.
std::string readLabel(const std::string& name, const std::string& prefix, std::string& refusal) {
    if (!name.ends_with(".xml")) {
        refusal = "file name '" + name + "' not ends with '.xml'";
        return "";
    }
    const std::string stem = GetInfoXmlDir(name);
    std::string label = FileMatchToPrefix(stem, prefix) ? stem.substr(prefix.size() + 1) : "";
    if (label.empty() || !DiscoveredMatchToLabel(stem, label)) {
        refusal = "The file '" + name + "' is not valid backup file name!";
        return "";
    }
    if (!IsLabel(label)) {
        refusal = "file name '" + name + "' has invalid date prefix '" + label + "'";
        return "";
    }
    return label;
}

// Two owners are as good as another one.
bool isOwnedBy(tRepository& repository, const std::string& path, const std::string& owner) {
    const Paths owners = repository.GetDiscoveredItems(path, D_ITEM_OWNER);
    return !owners.empty() && std::all_of(owners.begin(), owners.end(),
                                          [&](const std::string& value) { return value == owner; });
}

bool isSound(const std::vector<ValidationResult>& results) {
    return std::all_of(results.begin(), results.end(), [](const ValidationResult& result) {
        return result.status == BackupStatus::kOk;
    });
}

// Why a backup is not counted; empty if it is. The owner is asked first: a check leaves its verdict
// with the backup, and that of another owner is none of ours.
std::string refuseBackup(
    tRepository& repository, const std::string& path, const std::string& owner,
    const std::function<std::vector<ValidationResult>(const std::string&)>& validate) {
    const std::string name = fileNameOf(path);
    const std::string broken = "The backup : " + name + " is not valid!";
    std::string refusal = broken;
    toleratedInWords(
        [&] {
            if (repository.transport().IsDirExist(path)) {
                refusal = "The file '" + name + "' is not valid backup file name!";
            } else if (!isOwnedBy(repository, path, owner)) {
                refusal = "Rotation: the file '" + name + "' is not backup of owner " + owner;
            } else if (isSound(validate(path))) {
                refusal.clear();
            }
        },
        "unknown error", [](const std::string& reason) { LogError("Error: " + reason); });
    return refusal;
}

}  // namespace

void tRepository::RotateStructuredBackup(const std::string& owner, const std::string& prefix,
                                         int keep) {
    LogStep(logPrefix_ + "Rotate structured backups is started for owner " + owner);
    requireRotationCount(keep);
    requireName(owner, "owner");
    std::vector<RotationDecision> others;
    const std::vector<PrefixFileList> backups = findBackups(
        prefix, owner, [this](const std::string& path) { return ValidateBackup(path, false); },
        others);
    if (backups.empty()) {
        log("The backup list is empty. Nothing to rotate.");
        return;
    }
    if (std::ssize(backups) <= keep) {
        log("The backups count is less then rotation count. Nothing to rotate.");
        return;
    }
    removeOldest(
        backups, keep, "Rotation:", [this](const std::string& line) { log(line); },
        [&](const std::string& name) { DeleteBackup(joinPath(parentOf(prefix), name)); });
    log("Rotate structured backups is finished for owner " + owner);
}

std::vector<RotationDecision> tRepository::PlanStructuredRotation(const std::string& owner,
                                                                  const std::string& prefix,
                                                                  int keep) {
    requireRotationCount(keep);
    requireName(owner, "owner");
    const std::string dir = normalPath(parentOf(prefix));
    std::vector<RotationDecision> decisions;
    const std::vector<PrefixFileList> backups = findBackups(
        prefix, owner, [this](const std::string& path) { return peekAtStatus(path); }, decisions);
    for (RotationDecision& decision : planRotation(backups, keep)) {
        if (decision.isRemoved &&
            IsPartOfAnotherDump(*transport_, dir, GetInfoXmlsLabel(decision.name),
                                GetDumpPrefix(decision.name))) {
            decision = {decision.name, false, "is part of another backup"};
        }
        decisions.push_back(decision);
    }
    return decisions;
}

std::vector<PrefixFileList> tRepository::findBackups(const std::string& prefix,
                                                     const std::string& owner,
                                                     const Validation& validate,
                                                     std::vector<RotationDecision>& others) {
    const std::string dir = normalPath(parentOf(prefix));
    const std::string mask = fileNameOf(prefix);
    log("Find list of backups by mask '" + mask + "_YYMMDDHHMM' in the directory '" + dir + "'");
    Paths names;
    transport_->ListDir(dir, names);
    std::vector<PrefixFileList> backups;
    for (const std::string& name : names) {
        if (name == DISCOVERED) {
            continue;
        }
        std::string refusal;
        const std::string label = readLabel(name, mask, refusal);
        if (!label.empty()) {
            refusal = refuseBackup(*this, joinPath(dir, name), owner, validate);
        }
        if (refusal.empty()) {
            backups.push_back({label, {name}});
        } else {
            log(refusal);
            if (!label.empty()) {
                others.push_back({name, false, refusal});
            }
        }
    }
    return backups;
}

}  // namespace zelvo
