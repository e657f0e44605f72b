// The half of tRepository that packs files into an archive.
#include <unistd.h>

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <set>

#include "exec/log_exec_cmd.h"
#include "repository/archive_formats.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/tar_command.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

namespace {

// An end for links that lead in a circle.
constexpr int kMaxDepth = 64;

// Appends the files below a directory of root, as paths relative to root: what a transport fetches
// are files alone.
void listFiles(tRepositoryTransport& transport, const std::string& root, const std::string& below,
               int depth, Paths& files) {
    Paths names;
    transport.ListDir(joinPath(root, below), names);
    for (const std::string& name : names) {
        const std::string file = joinPath(below, name);
        if (!transport.IsDirExist(joinPath(root, file))) {
            files.push_back(file);
        } else if (depth < kMaxDepth) {
            listFiles(transport, root, file, depth + 1, files);
        } else {
            throw EXC(tRepository::ArchiverError) % (file + " is too deep");
        }
    }
}

// A temporary file with names as tar takes them from a list, in which none is an option; on a
// command line there is no room for those of a big backup.
TempFileGuard makeList(const Paths& names) {
    std::string text;
    for (const std::string& name : names) {
        text += name + '\0';
    }
    return makeTempFile(text);
}

// Whether there is a file, a directory or nothing: that is left to the archiver to tell.
bool isPlain(const std::string& localPath) {
    namespace fs = boost::filesystem;
    boost::system::error_code error;
    const fs::file_type type = fs::symlink_status(localPath, error).type();
    return type == fs::regular_file || type == fs::directory_file || type == fs::file_not_found;
}

// Refuses what an import would refuse, before there is an archive that nobody can use: a link would
// come alone to another machine, or with a file that is none of the backup's. root: a local
// directory, files below it; dir: what it is of the repository, for messages.
void requirePlain(const std::string& root, const Paths& files, const std::string& dir) {
    std::set<std::string> paths;
    for (const std::string& file : files) {
        for (auto end = file.find('/'); end != std::string::npos; end = file.find('/', end + 1)) {
            paths.insert(file.substr(0, end));
        }
        paths.insert(file);
    }
    for (const std::string& path : paths) {
        if (!isPlain(joinPath(root, path))) {
            throw EXC(tRepository::ArchiverError) %
                ("'" + joinPath(dir, path) + "' is neither a file nor a directory");
        }
    }
}

Paths fileNames(const Paths& paths) {
    Paths names(paths.size());
    std::transform(paths.begin(), paths.end(), names.begin(), fileNameOf);
    return names;
}

// Whether files get to their place by way of local ones, and cannot be renamed there.
bool isFarAway(tRepositoryTransport& transport) { return !transport.GetReceivingDir().empty(); }

bool asksForGzip(const std::string& name) {
    return name.ends_with(".tgz") || name.ends_with(".gz");
}

}  // namespace

void tRepository::PackFromRepo(tRepository& source, const std::string& dir,
                               const std::string& file) {
    log("Pack from " + source.place() + "/" + dir + " to " + file);
    Paths files;
    listFiles(source.transport(), dir, "", 0, files);
    pack(source, dir, files, {}, file);
}

void tRepository::PackFromRepo(tRepository& source, const std::string& dir, const Paths& files,
                               const std::string& filename, const std::string& extension,
                               std::uint64_t splitSize, const Paths& additionalFiles) {
    log("Pack from " + source.place() + "/" + dir + " to directory " + place() +
        " using: filename " + filename + ", extension " + extension +
        ". Addditional files count: " + std::to_string(additionalFiles.size()) +
        ". Split size: " + std::to_string(splitSize));
    if (splitSize != 0) {
        throw EXC(ArchiverError) % "Multivolume packing not implemented";
    }
    pack(source, dir, files, additionalFiles,
         extension.empty() ? filename : filename + "." + extension);
}

void tRepository::pack(tRepository& source, const std::string& dir, const Paths& files,
                       const Paths& additionalFiles, const std::string& file) {
    // Of a directory that is not there yet a server tells nothing.
    if (isFarAway(*transport_) && transport_->IsDirExist(parentOf(file)) &&
        transport_->IsExist(file)) {
        throw EXC(RepositoryError) % ("file " + file + " exists");
    }
    TempFileGuard archive(GetTempFilePath());
    const TempFileGuard list = makeList(files);
    const TempFileGuard additionalList = makeList(fileNames(additionalFiles));
    const std::string root = source.transport().GetLocalDirFiles(dir, files);
    requirePlain(root, files, dir);
    tLogExecCmd tar(TAR_UTIL);
    // A second name of a file would be a link, too.
    tar << (asksForGzip(file) ? "-czf" : "-cf") << archive.path() << "--hard-dereference"
        << "--no-unquote"
        << "-C" << root << "--null"
        << "--files-from=" + list.path();
    if (!additionalFiles.empty()) {
        tar << "-C" << parentOf(additionalFiles.front()) << "--files-from=" + additionalList.path();
    }
    if (tar.exec(std::nothrow) != 0) {
        throw EXC(ArchiverError) % ("from " + source.place() + "/" + dir + " to " + place() + "/" +
                                    file + ":\n" + tar.stderr);
    }
    putArchive(archive.path(), file);
    archive.remove();
}

void tRepository::putArchive(const std::string& localFile, const std::string& file) {
    if (isFarAway(*transport_)) {
        // Of a new one that fails the transport leaves nothing.
        Put(localFile, file);
        return;
    }
    log("Put file from " + localFile + " to " + file);
    const std::string half = joinPath(parentOf(file), ".new-" + std::to_string(getpid()));
    const TempFileGuard guard(transport_->GetFullPath(half));
    putAs(localFile, half, file);
    noteNew(file);
    boost::system::error_code error;
    boost::filesystem::rename(guard.path(), transport_->GetFullPath(file), error);
    if (error) {
        throw EXC(StreamPipeError) % (localFile + " to " + file + ":\n" + error.message());
    }
}

}  // namespace zelvo
