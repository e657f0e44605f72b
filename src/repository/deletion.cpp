// The half of tRepository that deletes one backup.
#include <algorithm>
#include <functional>
#include <set>

#include "repository/dump_content.h"
#include "repository/dump_owner.h"
#include "repository/file_parts.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/tolerated.h"

namespace zelvo {

namespace {

std::string notDeleted(const std::string& dir, const std::string& reason) {
    return "Unable to delete directory '" + dir + "': " + reason;
}

// The directories of a dump, each behind those below it. dir: that of its info document, which is
// among them unless it is the repository itself.
Paths directoriesOf(const DumpFiles& dump, const std::string& dir) {
    std::set<std::string, std::greater<>> dirs;
    for (const Paths& paths : {dump.files, dump.discovered}) {
        for (const std::string& path : paths) {
            for (std::string up = parentOf(path); up.size() > dir.size(); up = parentOf(up)) {
                dirs.insert(up);
            }
        }
    }
    if (!dir.empty()) {
        dirs.insert(dir);
    }
    return {dirs.begin(), dirs.end()};
}

void requireDump(tRepositoryTransport& transport, const std::string& path) {
    if (!transport.IsExist(path) && !transport.IsDirExist(GetDiscoveredDir(path))) {
        throw EXC(RepositoryError) % ("file " + path + " not exists");
    }
}

// Leaves of what was found the info document and its items, by which the rest is found again.
void keepDocument(DumpFiles& found, const std::string& infoPath) {
    std::erase(found.files, infoPath);
    std::erase(found.discovered, GetDiscoveredDir(infoPath));
}

}  // namespace

void requireOwnParts(tRepositoryTransport& transport, const std::string& path, const Paths& parts) {
    if (IsPartOfArchive(transport, path)) {
        throw EXC(RepositoryError) % ("file " + path + " is part of another archive");
    }
    StructuredContent content(transport);
    for (const std::string& part : parts) {
        if (content.holds(part)) {
            throw EXC(RepositoryError) % ("file " + part + " is content of a structured backup");
        }
    }
}

void tRepository::DeleteBackup(const std::string& path) {
    LogStep(logPrefix_ + "Delete backup " + path);
    const std::string label = GetInfoXmlsLabel(path);
    const std::string infoPath = normalPath(path);
    // A name that is none would otherwise delete what has the same first word.
    requireDump(*transport_, infoPath);
    if (IsPartOfAnotherDump(*transport_, parentOf(infoPath), label, GetDumpPrefix(infoPath))) {
        log("backup '" + path + "' is part of another backup");
        return;
    }
    DumpFiles found = FindDumpFiles(*transport_, infoPath);
    log("Found " + std::to_string(found.files.size()) + " files for deleting");
    if (!found.skipped.empty()) {
        keepDocument(found, infoPath);
    }
    // The info document last: a deletion that fails on the way can be tried again.
    std::stable_partition(found.files.begin(), found.files.end(), [&](const std::string& file) {
        return fileNameOf(file) != fileNameOf(infoPath);
    });
    for (const std::string& file : found.files) {
        transport_->Delete(file);
    }
    for (const std::string& dir : found.discovered) {
        toleratedInWords([&] { DeleteDir(dir); }, "unknown error",
                         [&](const std::string& reason) { log(notDeleted(dir, reason)); });
    }
    for (const std::string& dir : directoriesOf(found, parentOf(infoPath))) {
        toleratedInWords([&] { transport_->DeleteEmptyDir(dir); }, "unknown error",
                         [&](const std::string& reason) { log(notDeleted(dir, reason)); });
    }
    if (!found.skipped.empty()) {
        throw EXC(RepositoryError) % ("backup '" + path + "' is deleted in part: directory '" +
                                      found.skipped.front() + "' could not be searched");
    }
}

void tRepository::DeletePackedBackup(const std::string& path) {
    LogStep(logPrefix_ + "Delete packed backup " + path);
    if (path.empty()) {
        throw EXC(RepositoryError) % "path to deleting file is empty";
    }
    if (!transport_->IsExist(path)) {
        throw EXC(RepositoryError) % ("file " + path + " not exists");
    }
    inRepositoryWords("unable to delete packed dump: ", [&] {
        log("Retreaving dump parts...");
        Paths parts = GetFileParts(*transport_, path);
        requireOwnParts(*transport_, path, parts);
        // The archive itself last: a deletion that fails on the way can be tried again.
        std::reverse(parts.begin(), parts.end());
        for (const std::string& part : parts) {
            transport_->Delete(part);
            log("File '" + part + "' deleted");
        }
        log("Deleted");
    });
}

}  // namespace zelvo
