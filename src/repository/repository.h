// A backup repository: a tree of dump files on a transport, with empty marker files beside the
// dumps as its index.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "commons/exception.h"
#include "repository/archive_extraction.h"
#include "repository/backup_info.h"
#include "repository/files_transaction.h"
#include "repository/repository_errors.h"
#include "repository/rotation.h"
#include "repository/transport.h"

namespace zelvo {

using Paths = std::vector<std::string>;

class BackupsLister;

// What an import answers.
struct DumpImportResult {
    // The info document in the repository.
    std::string path;
    DumpImportStatus status = DumpImportStatus::kNew;
};

// All paths are relative to the repository. Every operation raises the failures of its transport.
class tRepository {
  public:
    static void StreamError(bool) {}
    static void StreamPipeError(bool) {}
    static void ArchiverError(bool) {}

    // The time that one transfer may take, in seconds; 0 for the default of the transport. A day
    // from the start: it is to end a transfer that hangs, not one of an archive of many gigabytes.
    static unsigned long s_requestTimeout;

    // place: URL or local path, without login. subdir: a directory of it that is taken for the
    // whole; empty for none. passive: as of tRepositoryTransport::Init.
    tRepository(const std::string& place, const std::string& login, const std::string& password,
                const std::string& subdir, bool passive);

    // url: with or without login. withSubdir: show GetRepositorySubDir() alone.
    static std::unique_ptr<tRepository> GetRepository(const std::string& url,
                                                      const std::string& password, bool passive,
                                                      bool withSubdir);
    // The one with the file of a URL in its top directory; name gets the file, which may be empty.
    // Raises RepositoryError for a URL without directory.
    static std::unique_ptr<tRepository> GetFileRepository(const std::string& url,
                                                          const std::string& password, bool passive,
                                                          std::string& name);
    // The one in the dump directory of the panel's configuration. Raises RepositoryException when
    // that is empty.
    static std::unique_ptr<tRepository> GetLocalRepository(bool withSubdir);
    static std::string GetLocalRepoPath();
    static std::string GetRepositorySubDir() { return ""; }

    tRepositoryTransport& transport() { return *transport_; }
    // For messages: URL or path, without login.
    const std::string& place() const { return place_; }

    // ---- store.

    // A file of this machine into the repository and back. Raise StreamError when either cannot be
    // opened, StreamPipeError when not all got to its place. A local file that got a part only is
    // removed; one in the repository is left to the transaction.
    void Put(const std::string& localFile, const std::string& repoFile);
    void Get(const std::string& repoFile, const std::string& localFile);
    // A short text. Raise StreamError.
    void PutInfo(const std::string& repoFile, const std::string& text);
    std::string GetInfo(const std::string& repoFile);
    void CreateDir(const std::string& path);
    // Is not part of the transaction.
    void DeleteDir(const std::string& path);

    // From BeginTransaction on, what is made is noted; RollbackTransaction removes it.
    void BeginTransaction() { transaction_->Begin(); }
    void CommitTransaction() { transaction_->Commit(); }
    void RollbackTransaction() { transaction_->Rollback(); }
    // Notes files below dir as made, and a name that ends in "/" as a directory; none of them may
    // have been there before.
    void AddFilesToTransaction(const std::string& dir, const Paths& files);

    // ---- index and discovered items: path is the directory of the dump, name its info document
    // without ".xml", infoPath the whole path of that. Names, items and values are components of a
    // path; RepositoryException is raised for others.

    void CreateRepositoryIndex(const std::string& item);
    void CreateRepositoryIndexFromImported(const Paths& files);
    void CreateDiscovered(const std::string& path, const std::string& name, long size,
                          const std::string& owner, const std::string& ownerType,
                          const std::string& guid, const std::string& objectId);
    void SetDiscoveredItem(const std::string& path, const std::string& name,
                           const std::string& item, const std::string& value);
    void SetDiscoveredItem(const std::string& infoPath, const std::string& item,
                           const std::string& value);
    Paths GetDiscoveredItems(const std::string& path, const std::string& name,
                             const std::string& item);
    Paths GetDiscoveredItems(const std::string& infoPath, const std::string& item);
    // The object ids that the index has for a GUID.
    static Paths GetDiscoveredNames(tRepositoryTransport& transport, const std::string& guid);

    // ---- listing and validation.

    // Appends the structured backups of an object; one that cannot be read and a directory that
    // cannot be listed are told in the log.
    // type: an object type. owner: GUID; empty for any. Raises RepositoryException for what is no
    // type.
    void BackupsList(const std::string& type, const std::string& guid, const std::string& owner,
                     std::vector<BackupInfo>& result, bool validate = false);
    // The same of every object.
    void AllBackupsList(const std::string& owner, std::vector<BackupInfo>& result,
                        bool validate = false);
    // Appends the archives of a directory. mask: a regular expression (Perl's) on names; empty for
    // any. Raises RepositoryError for one that is none.
    void PackedBackupsList(const std::string& dir, const std::string& mask,
                           std::vector<BackupInfo>& result);
    // path: an info document, an archive. Raise RepositoryError for a dump without discovered items
    // and an archive that is not there; a document that is not there is a failure of the transport.
    BackupInfo GetBackupInfo(const std::string& path, bool validate);
    BackupInfo GetPackedBackupInfo(const std::string& path);
    // discoveredDir: where the items of a dump stand.
    BackupInfo GetInitialBackupInfo(const std::string& discoveredDir);
    // path: an info document. The verdict is stored with the dump; what hinders the check is one
    // too, and not stored. force: check anew what has been checked. files: content files that
    // count as there.
    std::vector<ValidationResult> ValidateBackup(const std::string& path, bool force);
    std::vector<ValidationResult> ValidateBackup(const std::string& path, const Paths& files,
                                                 bool force);
    std::vector<ValidationResult> ValidatePackedBackup(const std::string& path);
    // In bytes.
    std::uint64_t GetDiskUsage(const std::string& type, const std::string& guid,
                               const std::string& owner);

    // ---- packing, export and import: url names a file of another repository, with a directory.

    // Packs files of source into an archive here; one whose name ends in ".tgz" or ".gz" is
    // compressed (gzip). dir: of source; the archive has its files without it. The first takes all
    // that is below it. What fails leaves no archive, and one that was there as it was; on a server
    // none is replaced. Raise ArchiverError, also for a file that is a link or a device, or that
    // stands behind a link, and RepositoryError.
    void PackFromRepo(tRepository& source, const std::string& dir, const std::string& file);
    // files: below dir. extension: without a dot; may be empty. splitSize: 0, others are refused.
    // additionalFiles: local ones, which come to the top of the archive.
    void PackFromRepo(tRepository& source, const std::string& dir, const Paths& files,
                      const std::string& filename, const std::string& extension,
                      std::uint64_t splitSize, const Paths& additionalFiles);
    // Packs the backup of an info document, which is signed. filename: of the archive in target,
    // without extension; empty for that of the dump. extension: without a dot; "tgz" if empty.
    // Raises RepositoryError for a backup whose document names a file that is not there.
    void ExportToRepo(const std::string& path, tRepository& target, const std::string& filename,
                      const std::string& extension);
    // The last component of url may be empty: the archive is named as the dump.
    void Export(const std::string& infoPath, const std::string& url, const std::string& password,
                bool passive);
    // Copies an archive with its parts; of a copy that fails nothing is left. Raises
    // RepositoryError, also for one that is there already.
    void PackedExportToRepo(const std::string& path, tRepository& target,
                            const std::string& targetPath);
    void PackedExport(const std::string& path, const std::string& url, const std::string& password,
                      bool passive);
    // Turns an archive of source, that of one backup, into that backup. ownerType: the highest
    // object type that it may have. ownerGuid: of its object or its owner. Raise ImportException
    // for a dump of another and for an archive with anything that is no part of one dump, before
    // anything is written; RepositoryException, ArchiverError. An import that fails on the way is
    // undone by RollbackTransaction.
    DumpImportResult ImportFromRepo(tRepository& source, const std::string& path,
                                    const std::string& ownerType, const std::string& ownerGuid);
    DumpImportResult Import(const std::string& url, const std::string& password, bool passive,
                            const std::string& ownerType, const std::string& ownerGuid);

    // Unpack an archive of one or more volumes. dest: a local directory; for the second a directory
    // of target. includes: the members to take; empty for all. Return what was unpacked, relative
    // to dest. Raise ArchiverError, and the first TransportError for an empty dest.
    Paths Unpack(const Paths& volumes, const std::string& dest, const Paths& includes,
                 MemberAttributes attributes = MemberAttributes::kKept);
    Paths UnpackToRepo(const Paths& volumes, tRepository& target, const std::string& dest,
                       const Paths& includes,
                       MemberAttributes attributes = MemberAttributes::kKept);

    // ---- deletion.

    // path: an info document. A backup that is part of another one stays, and so do files that
    // may be of another. The directories that are empty without it go, up to its own. Raises
    // RepositoryError for a backup that is not there.
    void DeleteBackup(const std::string& path);
    // path: an archive, whose parts go with it. Raises RepositoryError.
    void DeletePackedBackup(const std::string& path);
    // Leave the newest keep backups; raise RepositoryException for a negative number. A backup that
    // cannot be removed is told in the log. prefix: the path of the info documents without "_" and
    // label. Only sound backups of the owner, a GUID, count. mask: the archives' name without "_"
    // and label, with extension.
    void RotateStructuredBackup(const std::string& owner, const std::string& prefix, int keep);
    void RotateFileBackup(const std::string& dir, const std::string& mask, int keep);
    // What they would do with each backup that fits. Leave nothing behind, no verdict either.
    std::vector<RotationDecision> PlanStructuredRotation(const std::string& owner,
                                                         const std::string& prefix, int keep);
    std::vector<RotationDecision> PlanFileRotation(const std::string& dir, const std::string& mask,
                                                   int keep);

  private:
    // Writes a line with the name of the repository.
    void log(const std::string& text) const;
    // An open stream of a file, which is noted in the transaction if it is new. Raises StreamError.
    std::unique_ptr<orepostream> openToWrite(const std::string& path);
    std::unique_ptr<irepostream> openToRead(const std::string& path);
    // Put without its line in the log, to another name. repoFile: the one for messages.
    void putAs(const std::string& localFile, const std::string& writtenFile,
               const std::string& repoFile);
    // Notes in the transaction what is not there yet of a path: the entry (a directory if it ends
    // in
    // "/") and the directories above it, which are made with a file.
    void noteNew(const std::string& path);
    // Makes the directory if there is none.
    void requireDir(const std::string& path);
    // Writes an archive to file. files: below dir.
    void pack(tRepository& source, const std::string& dir, const Paths& files,
              const Paths& additionalFiles, const std::string& file);
    // Puts an archive in its place when it is whole there.
    void putArchive(const std::string& localFile, const std::string& file);
    void copyParts(const Paths& parts, tRepository& target, const Paths& targets);
    // Notes in the transaction what an import of files will make below dest. Raises ImportException
    // for a file that is there: nothing is overwritten.
    void noteImport(const std::string& dest, const Paths& files);
    // Notes in the transaction what of an archive's members will be new below dest.
    void noteUnpacking(const std::string& dest, const Paths& members);
    // UnpackToRepo without a note in the transaction.
    Paths unpackNoted(const Paths& volumes, tRepository& target, const std::string& dest,
                      const Paths& includes, MemberAttributes attributes);
    // Makes imported files a backup of this repository.
    void finishImport(const std::string& dest, const std::string& infoName, const Paths& files);
    std::vector<ValidationResult> GetPackedBackupProps(const std::string& path);
    // The sound structured backups of an owner. prefix: as of RotateStructuredBackup. validate:
    // gets the path of an info document. The other entries of the directory are told in the log;
    // those of them that have the name of such a backup are added to others.
    using Validation = std::function<std::vector<ValidationResult>(const std::string&)>;
    std::vector<PrefixFileList> findBackups(const std::string& prefix, const std::string& owner,
                                            const Validation& validate,
                                            std::vector<RotationDecision>& others);
    // The archives of a directory that fit a mask; the other entries are told in the log.
    std::vector<PrefixFileList> findPackedBackups(const std::string& dir, const std::string& mask);
    // Stores the verdict on a dump in the place of an earlier one; a store that refuses it is told
    // in the log.
    void storeStatus(const std::string& infoPath, BackupStatus status);
    ValidationResult checkBackup(const std::string& infoPath, const Paths& files);
    // The stored verdict on a dump, or else that of a check, which is not stored.
    std::vector<ValidationResult> peekAtStatus(const std::string& infoPath);
    // Lists what stands in directories of dumps. type: of their objects, for messages.
    void listBackups(const Paths& dirs, const std::string& type, BackupsLister& lister);
    // The directories that can hold the dumps of an object, and those of every object.
    Paths searchObjectDirs(const std::string& type, const std::string& guid);
    Paths allObjectDirs();
    // Makes the directory of the discovered items of a dump and returns its path.
    std::string makeDiscoveredDir(const std::string& path, const std::string& name);

    std::string place_;
    std::string logPrefix_;
    std::unique_ptr<tRepositoryTransport> rootTransport_;
    // Of the sub-directory, if there is one.
    std::unique_ptr<tRepositoryTransport> chroot_;
    tRepositoryTransport* transport_;
    std::unique_ptr<tFilesTransaction> transaction_;
};

}  // namespace zelvo

ERROR_DEFINITION(zelvo::tRepository::StreamError, "tRepository::StreamError", "Stream error: %1%");
ERROR_DEFINITION(zelvo::tRepository::StreamPipeError, "tRepository::StreamPipeError",
                 "Unable to copy streams: %1%");
// The code is that of another error, and readers of result documents know it so.
ERROR_DEFINITION(zelvo::tRepository::ArchiverError, "tRepository::StreamError",
                 "Archiver error: %1%");
