// The commands that bring backups from one repository to another.
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/tolerated.h"
#include "restorectl/backup_commands.h"
#include "restorectl/places.h"
#include "restorectl/repository_lock.h"

namespace zelvo {

namespace {

// The name of an archive without extension, and the extension, which is "tgz" if it has none.
struct ArchiveName {
    std::string stem;
    std::string extension;

    std::string whole() const { return stem + "." + extension; }
};

// given: empty for the name of the dump. Raises UsageError for half a name: an export would fill in
// the rest of it.
ArchiveName archiveName(const std::string& given, const std::string& infoPath) {
    if (given.empty()) {
        return {GetDumpPrefix(infoPath) + "_" + GetInfoXmlsLabel(infoPath), "tgz"};
    }
    const std::size_t dot = given.rfind('.');
    ArchiveName name = dot == std::string::npos
                           ? ArchiveName{given, "tgz"}
                           : ArchiveName{given.substr(0, dot), given.substr(dot + 1)};
    if (name.stem.empty() || name.extension.empty()) {
        throw UsageError("'" + given + "' is no name of an archive");
    }
    return name;
}

// What is there with the name of an archive or of a part of it would be lost or become part of it.
void requireFree(tRepository& target, const std::string& archive) {
    Paths entries;
    if (target.transport().IsDirExist("")) {
        target.transport().ListDir("", entries);
    }
    unsigned number = 0;
    for (const std::string& entry : entries) {
        if (IsSplittedPart(archive, entry, number)) {
            throw EXC(RepositoryError) % ("file " + entry + " exists");
        }
    }
}

Report tellArchive(const tRepository& target, const std::string& name) {
    Report report = Report::ofOne("archive", {{"place", "Place"}, {"archive", "Archive"}});
    report.add({target.place(), name});
    return report;
}

// What an import makes is undone unless it comes to its end.
class ImportTransaction {
  public:
    explicit ImportTransaction(tRepository& repository) : repository_(repository) {
        repository_.BeginTransaction();
    }
    ~ImportTransaction() {
        if (isOpen_) {
            toleratedInWords([&] { repository_.RollbackTransaction(); }, "unknown error",
                             [](const std::string& reason) { LogError(reason); });
        }
    }
    ImportTransaction(const ImportTransaction&) = delete;
    ImportTransaction& operator=(const ImportTransaction&) = delete;

    void commit() {
        isOpen_ = false;
        repository_.CommitTransaction();
    }

  private:
    tRepository& repository_;
    bool isOpen_ = true;
};

}  // namespace

Report exportBackup(const Settings& settings, Narrator& /*narrator*/) {
    const auto repository = openRepository(settings);
    const std::string& path = settings.paths.front();
    std::string given;
    const auto target = openOther(settings, given);
    const ArchiveName name = archiveName(given, path);
    const RepositoryLock lock(target->place());
    requireFree(*target, name.whole());
    repository->ExportToRepo(path, *target, name.stem, name.extension);
    return tellArchive(*target, name.whole());
}

Report copyArchive(const Settings& settings, Narrator& /*narrator*/) {
    const auto repository = openRepository(settings);
    const std::string& path = settings.paths.front();
    std::string given;
    const auto target = openOther(settings, given);
    const std::string name = given.empty() ? fileNameOf(path) : given;
    const RepositoryLock lock(target->place());
    requireFree(*target, name);
    repository->PackedExportToRepo(path, *target, name);
    return tellArchive(*target, name);
}

Report importBackup(const Settings& settings, Narrator& /*narrator*/) {
    const auto repository = openRepository(settings);
    std::string name;
    const auto source = openOther(settings, name);
    const RepositoryLock lock(repository->place());
    ImportTransaction transaction(*repository);
    const DumpImportResult result =
        repository->ImportFromRepo(*source, name, settings.type, settings.guid);
    transaction.commit();
    const bool isNew = result.status == DumpImportStatus::kNew;
    Report report = Report::ofOne("import", {{"path", "Backup"}, {"status", "Status"}});
    report.add({result.path, isNew ? "imported" : "was there already"});
    return report;
}

}  // namespace zelvo
