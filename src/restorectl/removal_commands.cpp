// The commands that destroy: both look before and behind, and tell what stays.
#include <boost/algorithm/string/join.hpp>

#include "commons/termination.h"
#include "report/termination_lines.h"
#include "repository/dump_content.h"
#include "repository/dump_owner.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "restorectl/backup_commands.h"
#include "restorectl/described_backup.h"
#include "restorectl/places.h"
#include "restorectl/repository_lock.h"

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

// A file of the repository that is no backup by its name, such as one of the archives of a
// structured backup, is not to be deleted by itself.
void requireArchiveName(const std::string& path) {
    std::string before;
    std::string behind;
    if (!isStructured(path) &&
        (!IsFtpDumpName(fileNameOf(path)) || IsAnyDiscoveredPath(path, before, behind))) {
        throw EXC(RepositoryError) % ("'" + path + "' is no name of a backup");
    }
}

// Adds the row of one backup.
void deleteOne(tRepository& repository, const std::string& path, const Settings& settings,
               Report& report) {
    requireArchiveName(path);
    if (isPartOfAnother(repository, path)) {
        report.add({path, kKept, "is part of another backup", Paths()});
        report.fail();
        return;
    }
    const Paths files = filesOf(repository, path);
    if (files.empty()) {
        throw EXC(RepositoryError) % ("file " + path + " not exists");
    }
    if (!isStructured(path)) {
        requireOwnParts(repository.transport(), path, files);
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

// A request to stop ends it, and what came of it until then is told.
void rotateUntilStopped(tRepository& repository, const Settings& settings, Narrator& narrator) {
    try {
        rotate(repository, settings);
    } catch (const MigrationTerminatedException& stop) {
        narrator.addFailure(stop.what());
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
    const RepositoryLock lock(repository->place());
    for (const std::string& path : settings.paths) {
        try {
            checkProgramTerminated();
            deleteOne(*repository, path, settings, report);
        } catch (const ExTraceable& failure) {
            report.fail(path + ": " + failure.what());
        } catch (const MigrationTerminatedException& stop) {
            report.fail(path + ": " + stop.what());
            break;
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
        const RepositoryLock lock(repository->place());
        rotateUntilStopped(*repository, settings, narrator);
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
