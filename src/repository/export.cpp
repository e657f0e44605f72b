// The half of tRepository that brings a structured backup into an archive elsewhere.
#include <set>

#include "repository/dump_content.h"
#include "repository/dump_owner.h"
#include "repository/info_xml_reader.h"
#include "repository/local_files.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

namespace {

// path without dir in front of it, below which it stands.
std::string pathBelow(const std::string& dir, const std::string& path) {
    return path.substr(joinPath(dir, "").size());
}

// An archive that lacks what its documents name would look like a backup until it is restored. Of a
// document that cannot be read only the search tells.
void requireWhole(tRepositoryTransport& transport, const DumpFiles& found) {
    if (!found.skipped.empty()) {
        throw EXC(RepositoryError) % ("directory '" + found.skipped.front() +
                                      "' could not be searched for the files of the backup");
    }
    const std::set<std::string> files(found.files.begin(), found.files.end());
    for (const std::string& infoPath : found.files) {
        if (!infoPath.ends_with(".xml")) {
            continue;
        }
        const DumpContent content(transport, infoPath);
        for (const std::string& path : content.paths()) {
            if (!files.contains(path)) {
                throw EXC(RepositoryError) %
                    ("content file '" + path + "' was not found among the files of the backup");
            }
        }
    }
}

// The files of a dump but for its info document, below the directory of that.
Paths listDump(tRepositoryTransport& transport, const std::string& infoPath) {
    const std::string dir = parentOf(infoPath);
    const DumpFiles found = FindDumpFiles(transport, infoPath);
    requireWhole(transport, found);
    Paths files;
    for (const std::string& file : found.files) {
        if (file != joinPath(dir, fileNameOf(infoPath))) {
            files.push_back(pathBelow(dir, file));
        }
    }
    for (const std::string& items : found.discovered) {
        Paths names;
        transport.ListDir(items, names);
        for (const std::string& name : names) {
            files.push_back(pathBelow(dir, joinPath(items, name)));
        }
    }
    return files;
}

}  // namespace

void tRepository::ExportToRepo(const std::string& path, tRepository& target,
                               const std::string& filename, const std::string& extension) {
    LogStep(logPrefix_ + "Export from " + path + " to " + target.place() + "/" + filename);
    const std::string infoPath = normalPath(path);
    const TempDirGuard signedDir;
    const std::string signedInfo = joinPath(signedDir.path(), fileNameOf(infoPath));
    tInfoXmlReader reader(transport_, infoPath);
    const std::string name =
        filename.empty() ? GetDumpPrefix(infoPath) + "_" + GetInfoXmlsLabel(infoPath) : filename;
    const Paths files = listDump(*transport_, infoPath);
    reader.Sign();
    copyLocalFile(reader.GetLocalPath(), signedInfo);
    target.PackFromRepo(*this, parentOf(infoPath), files, name,
                        extension.empty() ? "tgz" : extension, 0, {signedInfo});
}

void tRepository::Export(const std::string& infoPath, const std::string& url,
                         const std::string& password, bool passive) {
    std::string name;
    const std::unique_ptr<tRepository> target = GetFileRepository(url, password, passive, name);
    const auto dot = std::min(name.rfind('.'), name.size());
    ExportToRepo(infoPath, *target, name.substr(0, dot),
                 name.substr(std::min(dot + 1, name.size())));
}

}  // namespace zelvo
