// The one interface to the files of a repository, wherever they are.
#pragma once

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "commons/exception.h"
#include "repository/creation_date.h"

namespace zelvo {

// An entry of a directory.
struct FileInfo : CreationDateMixin {
    // Without the path.
    std::string name;
    // In bytes.
    std::uint64_t size = 0;
    // Servers list them as well; among local entries there are none.
    bool isDirectory = false;
};

// A file of a repository that is read. Nothing is fetched before open.
class irepostream : public std::ifstream {
  public:
    // Releases what open got; raises TransportError.
    virtual void close() = 0;
    // Raises TransportError. Of no effect on an open stream.
    virtual void open() = 0;
    virtual bool is_open() const = 0;
};

// A file of a repository that is written. It stands there in full behind close only.
class orepostream : public std::ofstream {
  public:
    // Brings what was written to its place; raises TransportError if it did not get there. A
    // destructor cleans up and brings nothing.
    virtual void close() = 0;
    // As of irepostream.
    virtual void open() = 0;
    virtual bool is_open() const = 0;
};

// A place that holds files. All paths are relative to it, with "/" between components. Each
// operation logs what it does, and each raises TransportError with the path and the reason.
class tRepositoryTransport {
  public:
    // Failures of no single operation: of a path that must be relative, of a stream.
    static void PathIsAbsoluteError(bool) {}
    static void StreamError(bool) {}

    // rootUrl: the place, as NormalizeRepoUrl leaves it.
    explicit tRepositoryTransport(std::string rootUrl) : url(std::move(rootUrl)) {}
    virtual ~tRepositoryTransport() = default;
    tRepositoryTransport(const tRepositoryTransport&) = delete;
    tRepositoryTransport& operator=(const tRepositoryTransport&) = delete;

    // The transport for a URL or a local path. It must be given credentials before it is used.
    static std::unique_ptr<tRepositoryTransport> Get(const std::string& url);
    // Shows the directory root of parent, which must outlive the result, as a transport. Raises
    // TransportError for a root that leads out of the parent.
    static std::unique_ptr<tRepositoryTransport> Chroot(tRepositoryTransport& parent,
                                                        const std::string& root);

    // passive: data connections are made by this side (FTP). timeout: of one transfer, in seconds;
    // 0 for the default of the transport.
    virtual void Init(const std::string& login, const std::string& password, bool passive,
                      unsigned long timeout) = 0;
    virtual std::unique_ptr<irepostream> GetFile(const std::string& path) = 0;
    // Makes the directories above it that are missing.
    virtual std::unique_ptr<orepostream> PutFile(const std::string& path) = 0;
    // Copies what is left of source into a file. Raises StreamError.
    virtual void PutFile(std::istream& source, const std::string& path);
    // Only proves that the file can be read: nothing is written to target.
    virtual void Copy(const std::string& path, tRepositoryTransport& target,
                      const std::string& targetPath);
    virtual void Delete(const std::string& path) = 0;
    // Copy, and then Delete: the file is gone.
    virtual void Move(const std::string& path, tRepositoryTransport& target,
                      const std::string& targetPath);
    // One that is there already is no failure.
    virtual void CreateDir(const std::string& path) = 0;
    // With all that is below it.
    virtual void DeleteDir(const std::string& path) = 0;
    // Only if nothing is in it: it stays otherwise, which is no failure.
    virtual void DeleteEmptyDir(const std::string& path) = 0;
    // Appends the names of the directory's entries, without the path and without "." and "..".
    virtual void ListDir(const std::string& path, std::vector<std::string>& names) = 0;
    virtual void ListDirEx(const std::string& path, std::vector<FileInfo>& entries) = 0;
    virtual bool IsExist(const std::string& path) = 0;
    virtual bool IsDirExist(const std::string& path) = 0;
    // Whether it is a symbolic link, to whatever; false where no one can tell.
    virtual bool IsLink(const std::string& path) = 0;
    // The local directory in which what is to be sent with ReceiveDir is made; empty for one whose
    // files are local.
    virtual std::string GetReceivingDir() = 0;
    // Brings the directory path below the receiving directory to its place.
    virtual void ReceiveDir(const std::string& path) = 0;
    // Empties the receiving directory; what hinders that is told in the log.
    virtual void ClearReceivingDir() noexcept = 0;
    virtual CreationDateMixin GetCreationDate(const std::string& path) = 0;
    // The name of a local file with the content, which lives as long as the transport.
    virtual std::string GetLocalFile(const std::string& path) = 0;
    // The name of a local directory that holds the files names of the directory path.
    virtual std::string GetLocalDirFiles(const std::string& path,
                                         const std::vector<std::string>& names) = 0;
    // In bytes.
    virtual std::uint64_t GetFileSize(const std::string& path) = 0;
    virtual std::string GetUrl() const { return url; }
    // A whole file of this machine to its place and a file into one, which is cut, without the way
    // over a stream. Return false where that is the shortest way; nothing is done then. localFile:
    // a regular one. A fetch that fails leaves no local file.
    virtual bool SendFile(const std::string& /*localFile*/, const std::string& /*path*/) {
        return false;
    }
    virtual bool FetchFile(const std::string& /*path*/, const std::string& /*localFile*/) {
        return false;
    }

    // The place and the path in one. Raises what relativePath raises.
    std::string GetFullPath(const std::string& path) const;
    // Makes each directory above path, from the top.
    void CreateParentDirs(const std::string& path);

  protected:
    std::string url;
};

// The URL without one "/" or "\" at its end.
std::string NormalizeRepoUrl(const std::string& url);

// Copies in to out, by blocks, to the end of in. Raises InputStreamException and
// OutputStreamException. What out still holds in its buffer may be lost after it.
void Pipe(std::istream& in, std::ostream& out);

}  // namespace zelvo

ERROR_DEFINITION(zelvo::tRepositoryTransport::PathIsAbsoluteError,
                 "tRepositoryTransport::PathIsAbsoluteError", "Path is absolute: %1%");
ERROR_DEFINITION(zelvo::tRepositoryTransport::StreamError, "tRepositoryTransport::StreamError",
                 "Stream error: %1%");
