// The commands that destroy: both look before and behind, and tell what stays.
#include <boost/algorithm/string/join.hpp>

#include "report/termination_lines.h"
#include "repository/dump_owner.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "restorectl/backup_commands.h"
#include "restorectl/described_backup.h"
#include "restorectl/places.h"

namespace zelvo {

namespace {

const char* const kKept = "kept";

// What happens to what is not kept.
const char* removedWord(const Settings& settings) {
    return settings.isDryRun ? "would be removed" : "removed";
}

bool isPartOfAnother(tRepository& repository, const std::string& path) {
    return isStructured(path) && IsPartOfAnotherDump(repository.transport(), parentOf(path),
                                                     GetInfoXmlsLabel(path), GetDumpPrefix(path));
}

void deleteBackup(tRepository& repository, const std::string& path) {
    if (isStructured(path)) {
        repository.DeleteBackup(path);
    } else {
        repository.DeletePackedBackup(path);
    }
}

// Adds the row of one backup.
void deleteOne(tRepository& repository, const std::string& path, const Settings& settings,
               Report& report) {
    if (isPartOfAnother(repository, path)) {
        report.add({path, kKept, "is part of another backup", Paths()});
        report.fail();
        return;
    }
    const Paths files = filesOf(repository, path);
    if (files.empty()) {
        throw EXC(RepositoryError) % ("file " + path + " not exists");
    }
    if (!settings.isDryRun) {
        deleteBackup(repository, path);
    }
    report.add({path, removedWord(settings), "was asked for", files});
}

std::vector<RotationDecision> planRotation(tRepository& repository, const Settings& settings) {
    const std::string& path = settings.paths.front();
    return settings.isPacked
               ? repository.PlanFileRotation(parentOf(path), fileNameOf(path), settings.keep)
               : repository.PlanStructuredRotation(settings.owner, path, settings.keep);
}

void rotate(tRepository& repository, const Settings& settings) {
    const std::string& path = settings.paths.front();
    if (settings.isPacked) {
        repository.RotateFileBackup(parentOf(path), fileNameOf(path), settings.keep);
    } else {
        repository.RotateStructuredBackup(settings.owner, path, settings.keep);
    }
}

// What a rotation has done with an entry: it goes on behind what it cannot remove.
std::string actionOn(tRepository& repository, const RotationDecision& decision,
                     const Settings& settings) {
    if (!decision.isRemoved) {
        return kKept;
    }
    const std::string path = joinPath(parentOf(settings.paths.front()), decision.name);
    return !settings.isDryRun && repository.transport().IsExist(path) ? "could not be removed"
                                                                      : removedWord(settings);
}

}  // namespace

Report deleteBackups(const Settings& settings, Narrator& /*narrator*/) {
    const auto repository = openRepository(settings);
    Report report = Report::ofMany(
        "backups",
        {{"path", "PATH"}, {"action", "ACTION"}, {"reason", "REASON"}, {"files", "FILES"}});
    for (const std::string& path : settings.paths) {
        checkProgramTerminated();
        try {
            deleteOne(*repository, path, settings, report);
        } catch (const ExTraceable& failure) {
            report.fail(path + ": " + failure.what());
        }
    }
    return report;
}

Report rotateBackups(const Settings& settings, Narrator& narrator) {
    const auto repository = openRepository(settings);
    const std::vector<RotationDecision> plan = planRotation(*repository, settings);
    // What the search for them met is in the reasons already.
    narrator.takeFailures();
    if (!settings.isDryRun) {
        rotate(*repository, settings);
    }
    Report report =
        Report::ofMany("backups", {{"name", "NAME"}, {"action", "ACTION"}, {"reason", "REASON"}});
    bool isDone = true;
    for (const RotationDecision& decision : plan) {
        const std::string action = actionOn(*repository, decision, settings);
        isDone = isDone && (!decision.isRemoved || action == removedWord(settings));
        report.add({decision.name, action, decision.reason});
    }
    if (!isDone) {
        report.fail("not all backups could be removed: " +
                    boost::join(narrator.takeFailures(), "; "));
    }
    return report;
}

}  // namespace zelvo
