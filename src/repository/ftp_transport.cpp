#include "repository/ftp_transport.h"

#include <algorithm>
#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>

#include "repository/ftp_failure.h"
#include "repository/ftp_streams.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

namespace fs = boost::filesystem;

// How deep a tree may be that is deleted: a server may go on for ever.
constexpr int kMaxDepth = 64;

std::string withoutSlashes(const std::string& path) {
    return path.substr(0, path.find_last_not_of('/') + 1);
}

}  // namespace

std::unique_ptr<tRepositoryTransport> makeFtpTransport(const std::string& url) {
    return std::make_unique<tRepositoryFtp>(url);
}

tRepositoryFtp::tRepositoryFtp(const std::string& rootUrl)
    : tRepositoryTransport(NormalizeRepoUrl(rootUrl)) {}

void tRepositoryFtp::Init(const std::string& login, const std::string& password, bool passive,
                          unsigned long timeout) {
    LogMsg("Transport: Init credentials for user '" + login + "'");
    tFtpConnection::Prepare();
    connection_ = std::make_unique<tFtpConnection>(passive, timeout);
    login_ = login;
    password_ = password;
}

FtpFile tRepositoryFtp::file(const std::string& path) const {
    if (connection_ == nullptr) {
        throw EXC(TransportError) % "the transport has no credentials";
    }
    return {connection_.get(), GetFullPath(withoutSlashes(path)), login_, password_, path};
}

tFtpConnection& tRepositoryFtp::at(const std::string& path) { return file(path).reach(); }

std::unique_ptr<irepostream> tRepositoryFtp::GetFile(const std::string& path) {
    LogMsg("Transport: Get file " + path);
    const FtpFile wanted = file(path);
    std::unique_ptr<irepostream> in;
    try {
        in = std::make_unique<tFtpInStream>(wanted, receiving_.newFile());
    } catch (const ExTraceable& cause) {
        throw ftpFailure("unable to read file " + path, cause);
    }
    in->open();
    return in;
}

std::unique_ptr<orepostream> tRepositoryFtp::PutFile(const std::string& path) {
    LogMsg("Transport: Put file " + path);
    const FtpFile wanted = file(path);
    const std::string place = inTransportWords("unable to write file " + path + ": ",
                                               [this] { return receiving_.newFile(); });
    auto out = std::make_unique<tFtpOutStream>(wanted, place);
    out->open();
    return out;
}

void tRepositoryFtp::Delete(const std::string& path) {
    LogMsg("Transport: Delete file " + path);
    inTransportWords("unable to delete directory: ",
                     [&] { at(removablePath(path)).DeleteFile_(); });
}

void tRepositoryFtp::CreateDir(const std::string& path) {
    LogMsg("Transport: Create dir " + path);
    inTransportWords("unable to create directory: ", [&] { at(path).CreateDir(); });
}

void tRepositoryFtp::DeleteDir(const std::string& path) {
    LogMsg("Transport: Delete dir " + path);
    inTransportWords("unable to delete directory: ", [&] { deleteEntry(removablePath(path), 0); });
}

void tRepositoryFtp::DeleteEmptyDir(const std::string& path) {
    LogMsg("Transport: Delete empty dir " + path);
    inTransportWords("unable to delete directory: ", [&] {
        std::vector<std::string> names;
        at(requireInside(path)).List(names);
        addHidden(path, names);
        if (names.empty()) {
            at(path).DeleteDir();
        }
    });
}

// The server's RMD takes an empty directory alone.
void tRepositoryFtp::deleteTree(const std::string& path, int depth) {
    if (depth > kMaxDepth) {
        throw EXC(TransportError) % (path + " is too deep");
    }
    std::vector<std::string> names;
    at(path).List(names);
    addHidden(path, names);
    for (const std::string& name : names) {
        deleteEntry(joinPath(path, name), depth + 1);
    }
    at(path).DeleteDir();
}

// Many servers leave out what begins with a dot. A backup would be deleted and its directory stay.
void tRepositoryFtp::addHidden(const std::string& path, std::vector<std::string>& names) {
    if (std::find(names.begin(), names.end(), DISCOVERED) == names.end() &&
        isDirectory(joinPath(path, DISCOVERED))) {
        names.push_back(DISCOVERED);
    }
}

// Names tell no types. What can be deleted as a file is none of those directories that are entered,
// not even a link to one.
void tRepositoryFtp::deleteEntry(const std::string& path, int depth) {
    try {
        at(path).DeleteFile_();
    } catch (const CurlException& failure) {
        if (failure.status() != CURLE_QUOTE_ERROR) {
            throw;
        }
        deleteTree(path, depth);
    }
}

void tRepositoryFtp::ListDir(const std::string& path, std::vector<std::string>& names) {
    LogMsg("Transport: List dir " + path);
    inTransportWords("unable to list directory: ", [&] { at(path).List(names); });
}

void tRepositoryFtp::ListDirEx(const std::string& path, std::vector<FileInfo>& entries) {
    LogMsg("Transport: List extended dir " + path);
    std::vector<FtpFileInfo> found;
    inTransportWords("unable to list directory: ", [&] { at(path).ListEx(found); });
    for (const FtpFileInfo& entry : found) {
        try {
            FileInfo info;
            info.name = tFtpConnection::GetFileName(GetFullPath(joinPath(path, entry.name)));
            info.size = static_cast<std::uint64_t>(entry.size);
            info.isDirectory = entry.isDirectory;
            info.SetDateTime(entry);
            entries.push_back(info);
        } catch (const ExTraceable& failure) {
            LogMsg("Unable to get full name for file name '" + entry.name + "'. Skip.");
            LogMsg(std::string("Error was: ") + failure.what());
        }
    }
}

bool tRepositoryFtp::IsExist(const std::string& path) {
    LogMsg("Transport: Check exist file " + path);
    return inTransportWords("unable to check file existence: ",
                            [&] { return holds(withoutSlashes(relativePath(path))); });
}

// A directory that cannot be entered says nothing of what it holds, unless it is not there itself.
bool tRepositoryFtp::holds(const std::string& path) {
    const std::string parent = parentOf(path);
    std::vector<std::string> names;
    try {
        at(parent).List(names);
    } catch (const CurlException& failure) {
        if (failure.status() != CURLE_REMOTE_ACCESS_DENIED || parent.empty() || holds(parent)) {
            throw;
        }
    }
    return std::find(names.begin(), names.end(), fileNameOf(path)) != names.end();
}

bool tRepositoryFtp::IsDirExist(const std::string& path) {
    LogMsg("Transport: Check exist dir " + path);
    return inTransportWords("unable to check directory existence: ",
                            [&] { return isDirectory(path); });
}

// A server that could not be asked has not said no: what is there would be taken for new, and go
// with what an operation that failed has made.
bool tRepositoryFtp::isDirectory(const std::string& path) {
    tFtpConnection& connection = at(path);
    const bool isThere = connection.IsDirExist();
    connection.checkAnswer();
    return isThere;
}

void tRepositoryFtp::ReceiveDir(const std::string& path) {
    if (fs::path(path).has_root_path()) {
        throw EXC(PathIsAbsoluteError) % path;
    }
    inTransportWords("unable to send directory to repository: ", [&] {
        const std::string directory = withoutSlashes(relativePath(path));
        CreateParentDirs(directory);
        sendDir(directory);
    });
}

void tRepositoryFtp::sendDir(const std::string& path) {
    if (!path.empty()) {
        at(path).CreateDir();
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(receiving_.path() + path)) {
        const std::string local = entry.path().string();
        const std::string place = joinPath(path, entry.path().filename().string());
        const fs::file_type type = entry.symlink_status().type();
        if (receiving_.isOwn(local)) {
            continue;
        }
        if (type == fs::directory_file) {
            sendDir(place);
        } else if (type == fs::regular_file) {
            at(place).UploadFile(local);
        } else {
            throw EXC(TransportError) % ("'" + local + "' is neither a file nor a directory");
        }
    }
}

CreationDateMixin tRepositoryFtp::GetCreationDate(const std::string& path) {
    GetFullPath(path);
    return {};
}

std::string tRepositoryFtp::GetLocalFile(const std::string& path) {
    LogMsg("Transport: get local file '" + path + "'");
    return inTransportWords("Unable to download remote file '" + path + "': ", [&] {
        std::string place = receiving_.placeFor(path);
        at(path).DownloadFile(place);
        return place;
    });
}

std::string tRepositoryFtp::GetLocalDirFiles(const std::string& path,
                                             const std::vector<std::string>& names) {
    return receiving_.collect(
        path, names, [this](const std::string& file, const std::string& place) {
            inTransportWords("Unable to download remote file '" + file + "': ",
                             [&] { at(file).DownloadFile(place); });
        });
}

bool tRepositoryFtp::SendFile(const std::string& localFile, const std::string& path) {
    LogMsg("Transport: Put file " + path);
    inTransportWords("unable to write file " + path + ": ",
                     [&] { at(path).UploadFile(localFile); });
    return true;
}

bool tRepositoryFtp::FetchFile(const std::string& path, const std::string& localFile) {
    LogMsg("Transport: Get file " + path);
    try {
        at(path).DownloadFile(localFile);
    } catch (const ExTraceable& cause) {
        throw ftpFailure("unable to read file " + path, cause);
    }
    return true;
}

std::uint64_t tRepositoryFtp::GetFileSize(const std::string& path) {
    LogMsg("Transport: get file size of '" + path + "'");
    throw EXC(TransportError) % "tRepositoryFtp::GetFileSize not implemented";
}

}  // namespace zelvo
