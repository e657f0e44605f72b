#include "repository/local_transport.h"

#include <unistd.h>

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstring>

#include "repository/local_streams.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

namespace fs = boost::filesystem;

[[noreturn]] void fail(const std::string& what) {
    throw TransportException(EXC(TransportError) % what, TransportOperationStatus::kUnspecified);
}

// Runs an operation; a failure of the file system library becomes one of the transport with the
// same reason. what: the operation and its path.
template <class Operation>
auto inWords(const std::string& what, Operation&& operation) {
    try {
        return operation();
    } catch (const fs::filesystem_error& failure) {
        fail(what + ": " + failure.what());
    }
}

// Calls use with each entry that has a name of a file.
template <class Use>
void eachEntry(const std::string& path, const std::string& fullPath, Use&& use) {
    boost::system::error_code error;
    if (!fs::is_directory(fullPath, error)) {
        throw EXC(TransportError) % ("Dir is not exists " + path);
    }
    inWords("Unable to list dir " + path, [&] {
        for (const fs::directory_entry& entry : fs::directory_iterator(fullPath)) {
            const std::string name = entry.path().filename().string();
            if (isEntryName(name)) {
                use(entry.path(), name);
            }
        }
    });
}

}  // namespace

tRepositoryLocal::tRepositoryLocal(const std::string& path)
    : tRepositoryTransport(NormalizeRepoUrl(path)) {}

void tRepositoryLocal::Init(const std::string& login, const std::string&, bool, unsigned long) {
    LogMsg("Transport: Init credentials for user '" + login + "'");
}

std::unique_ptr<irepostream> tRepositoryLocal::GetFile(const std::string& path) {
    LogMsg("Transport: Get file " + path);
    auto in = std::make_unique<tLocalInStream>(GetFullPath(path), path);
    in->open();
    return in;
}

std::unique_ptr<orepostream> tRepositoryLocal::PutFile(const std::string& path) {
    LogMsg("Transport: Put file " + path);
    auto out = std::make_unique<tLocalOutStream>(GetFullPath(path), path);
    try {
        CreateParentDirs(path);
    } catch (const ExTraceable& failure) {
        throw EXC(TransportError) %
            ("Unable to create parent dirs for '" + path + "': " + failure.what());
    }
    out->open();
    return out;
}

void tRepositoryLocal::Delete(const std::string& path) {
    LogMsg("Transport: Delete file " + path);
    const std::string fullPath = GetFullPath(removablePath(path));
    inWords("Unable to delete file " + path, [&] {
        if (fs::is_directory(fs::symlink_status(fullPath))) {
            fail("Unable to delete file " + path + ": " + std::strerror(EISDIR));
        }
        fs::remove(fullPath);
    });
}

void tRepositoryLocal::CreateDir(const std::string& path) {
    LogMsg("Transport: Create dir " + path);
    const std::string fullPath = GetFullPath(path);
    inWords("Unable to create dir " + path, [&] { fs::create_directory(fullPath); });
}

void tRepositoryLocal::DeleteDir(const std::string& path) {
    LogMsg("Transport: Delete dir " + path);
    const std::string fullPath = GetFullPath(removablePath(path));
    inWords("Unable to delete dir " + path, [&] { fs::remove_all(fullPath); });
}

void tRepositoryLocal::DeleteEmptyDir(const std::string& path) {
    LogMsg("Transport: Delete empty dir " + path);
    const std::string fullPath = GetFullPath(requireInside(path));
    // Not the library's, which would remove a link that stands there.
    if (rmdir(fullPath.c_str()) != 0 && errno != ENOTEMPTY && errno != EEXIST) {
        fail("Unable to delete dir " + path + ": " + std::strerror(errno));
    }
}

void tRepositoryLocal::ListDir(const std::string& path, std::vector<std::string>& names) {
    LogMsg("Transport: List dir " + path);
    eachEntry(path, GetFullPath(path),
              [&](const fs::path&, const std::string& name) { names.push_back(name); });
}

void tRepositoryLocal::ListDirEx(const std::string& path, std::vector<FileInfo>& entries) {
    LogMsg("Transport: List extended dir " + path);
    eachEntry(path, GetFullPath(path), [&](const fs::path& entry, const std::string& name) {
        boost::system::error_code noSize;
        boost::system::error_code noTime;
        FileInfo info;
        info.name = name;
        info.size = fs::file_size(entry, noSize);
        info.SetDateTime(fs::last_write_time(entry, noTime));
        if (noSize || noTime) {
            LogMsg("Unable to get size of file: " + name);
        } else {
            entries.push_back(info);
        }
    });
}

bool tRepositoryLocal::IsExist(const std::string& path) {
    LogMsg("Transport: Check exist file " + path);
    boost::system::error_code error;
    return fs::exists(GetFullPath(path), error);
}

bool tRepositoryLocal::IsDirExist(const std::string& path) {
    LogMsg("Transport: Check exist dir " + path);
    boost::system::error_code error;
    return fs::is_directory(GetFullPath(path), error);
}

bool tRepositoryLocal::IsLink(const std::string& path) {
    boost::system::error_code error;
    return fs::symlink_status(GetFullPath(path), error).type() == fs::symlink_file;
}

CreationDateMixin tRepositoryLocal::GetCreationDate(const std::string& path) {
    CreationDateMixin date;
    date.SetDateTime(fs::last_write_time(GetFullPath(path)));
    return date;
}

std::string tRepositoryLocal::GetLocalFile(const std::string& path) {
    LogMsg("Transport: get local file '" + path + "'");
    boost::system::error_code error;
    if (!fs::exists(GetFullPath(path), error)) {
        throw EXC(TransportError) % ("File '" + path + "' not found");
    }
    return GetFullPath(path);
}

std::string tRepositoryLocal::GetLocalDirFiles(const std::string& path,
                                               const std::vector<std::string>&) {
    boost::system::error_code error;
    if (!fs::exists(GetFullPath(path), error)) {
        throw EXC(TransportError) % ("File or dir " + path + " not exists");
    }
    return GetFullPath(path);
}

std::uint64_t tRepositoryLocal::GetFileSize(const std::string& path) {
    LogMsg("Transport: get file size of '" + path + "'");
    const std::string fullPath = GetFullPath(path);
    return inWords("Unable to get size of " + path, [&] {
        try {
            return fs::file_size(fullPath);
        } catch (const fs::filesystem_error& failure) {
            LogMsg(std::string("Error: ") + failure.what());
            throw;
        }
    });
}

}  // namespace zelvo
