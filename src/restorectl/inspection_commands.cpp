// The commands that look at backups.
#include "commons/termination.h"
#include "report/termination_lines.h"
#include "restorectl/backup_commands.h"
#include "restorectl/described_backup.h"
#include "restorectl/places.h"

namespace zelvo {

namespace {

// The structured backups that the settings ask for.
std::vector<BackupInfo> findBackups(tRepository& repository, const Settings& settings) {
    std::vector<BackupInfo> backups;
    if (settings.listedType.empty()) {
        repository.AllBackupsList(settings.owner, backups, settings.isChecked);
    } else {
        repository.BackupsList(settings.listedType, settings.guid, settings.owner, backups,
                               settings.isChecked);
    }
    sortByDate(backups);
    return backups;
}

// What an operation could not read: what it tells is then not all there is.
void tellErrors(Report& report, Narrator& narrator) {
    for (const std::string& error : narrator.takeErrors()) {
        report.fail(error);
    }
}

ByteCount sizeOf(const BackupInfo& backup) { return {static_cast<std::uint64_t>(backup.size)}; }

Report listArchives(tRepository& repository, const Settings& settings) {
    Report report =
        Report::ofMany("archives", {{"date", "DATE"}, {"size", "SIZE"}, {"path", "PATH"}});
    std::vector<BackupInfo> backups;
    repository.PackedBackupsList(settings.paths.empty() ? "" : settings.paths.front(),
                                 settings.mask, backups);
    sortByDate(backups);
    for (const BackupInfo& backup : backups) {
        report.add({dateOf(backup), sizeOf(backup), backup.path});
    }
    return report;
}

Report listStructured(tRepository& repository, const Settings& settings) {
    std::vector<Column> columns = {{"date", "DATE"},          {"size", "SIZE"},
                                   {"ownerType", "OWNER IS"}, {"owner", "OWNER"},
                                   {"guid", "OBJECT"},        {"path", "PATH"}};
    if (settings.isChecked) {
        columns.push_back({"status", "STATUS"});
    }
    Report report = Report::ofMany("backups", columns);
    for (const BackupInfo& backup : findBackups(repository, settings)) {
        std::vector<Cell> row = {dateOf(backup),    sizeOf(backup), backup.owner_type,
                                 backup.owner_guid, backup.guid,    backup.path};
        if (settings.isChecked) {
            row.emplace_back(verdictOf(backup.validation));
            if (!isChecked(backup.validation)) {
                report.fail();
            }
        }
        report.add(row);
    }
    return report;
}

std::vector<ValidationResult> validate(tRepository& repository, const std::string& path,
                                       bool takesStored) {
    return isStructured(path) ? repository.ValidateBackup(path, !takesStored)
                              : repository.ValidatePackedBackup(path);
}

}  // namespace

Report listBackups(const Settings& settings, Narrator& narrator) {
    const auto repository = openRepository(settings);
    Report report = settings.isPacked ? listArchives(*repository, settings)
                                      : listStructured(*repository, settings);
    tellErrors(report, narrator);
    return report;
}

Report showBackup(const Settings& settings, Narrator& /*narrator*/) {
    const auto repository = openRepository(settings);
    const std::string& path = settings.paths.front();
    const BackupInfo backup = isStructured(path) ? repository->GetBackupInfo(path, false)
                                                 : repository->GetPackedBackupInfo(path);
    Report report = Report::ofOne("backup", {{"path", "Path"},
                                             {"date", "Date"},
                                             {"size", "Size"},
                                             {"ownerType", "Owner is"},
                                             {"owner", "Owner"},
                                             {"guid", "Object"},
                                             {"objectId", "Object id"},
                                             {"description", "Description"},
                                             {"files", "Files"}});
    report.add({backup.path, dateOf(backup), sizeOf(backup), backup.owner_type, backup.owner_guid,
                backup.guid, backup.object_id, backup.description, filesOf(*repository, path)});
    return report;
}

Report checkBackups(const Settings& settings, Narrator& narrator) {
    const auto repository = openRepository(settings);
    Paths paths = settings.paths;
    if (paths.empty()) {
        for (const BackupInfo& backup : findBackups(*repository, settings)) {
            paths.push_back(backup.path);
        }
    }
    Report report = Report::ofMany("checks", {{"path", "PATH"}, {"status", "STATUS"}});
    tellErrors(report, narrator);
    for (const std::string& path : paths) {
        try {
            checkProgramTerminated();
        } catch (const MigrationTerminatedException& stop) {
            report.fail(path + ": " + stop.what());
            break;
        }
        const std::vector<ValidationResult> results =
            validate(*repository, path, settings.takesStored);
        report.add({path, verdictOf(results)});
        if (!isSound(results)) {
            report.fail();
        }
    }
    return report;
}

Report tellUsage(const Settings& settings, Narrator& narrator) {
    const auto repository = openRepository(settings);
    Report report = Report::ofOne("usage", {{"size", "Size"}});
    std::uint64_t size = 0;
    if (settings.listedType.empty()) {
        for (const BackupInfo& backup : findBackups(*repository, settings)) {
            size = sumOfSizes(size, sizeOf(backup).bytes);
        }
    } else {
        size = repository->GetDiskUsage(settings.listedType, settings.guid, settings.owner);
    }
    report.add({ByteCount{size}});
    tellErrors(report, narrator);
    return report;
}

}  // namespace zelvo
