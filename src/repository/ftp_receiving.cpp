#include "repository/ftp_receiving.h"

#include <algorithm>
#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>

#include "commons/temp_names.h"
#include "repository/ftp_failure.h"
#include "repository/path_guard.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

namespace fs = boost::filesystem;

void makeDirectory(const std::string& path) {
    inTransportWords("Unable to create dir " + path + ": ", [&] { fs::create_directories(path); });
}

std::string makeTempDirectory(const std::string& above, const std::string& prefix) {
    return inTransportWords("Unable to keep local files: ",
                            [&] { return RMK_makeTempFileDirectory(above, prefix); });
}

}  // namespace

FtpReceiving::~FtpReceiving() {
    boost::system::error_code error;
    if (!path_.empty()) {
        fs::remove_all(path_, error);
    }
    if (error) {
        LogError("Unexpected error at deleting directory '" + path_ + "': " + error.message());
    }
}

const std::string& FtpReceiving::path() {
    if (path_.empty()) {
        path_ = makeTempDirectory("", "repository-") + "/";
    }
    return path_;
}

const std::string& FtpReceiving::own() {
    if (own_.empty()) {
        own_ = makeTempDirectory(path(), ".fetched-");
    }
    return own_;
}

bool FtpReceiving::isOwn(const std::string& localPath) const { return localPath == own_; }

void FtpReceiving::clear() const noexcept {
    if (path_.empty()) {
        return;
    }
    try {
        for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
            if (!isOwn(entry.path().string())) {
                fs::remove_all(entry.path());
            }
        }
    } catch (const fs::filesystem_error& failure) {
        LogError(std::string("Unable to clear the receiving directory: ") + failure.what());
    }
}

std::string FtpReceiving::newFile() { return RMK_getTempFileName(own(), "stream-"); }

std::string FtpReceiving::placeFor(const std::string& path) {
    std::string place = own() + "/files/" + relativePath(path);
    if (fs::exists(fs::symlink_status(place))) {
        throw EXC(TransportError) % ("Local file '" + place + "' already exist");
    }
    makeDirectory(parentOf(place));
    return place;
}

std::string FtpReceiving::collect(const std::string& path, const std::vector<std::string>& names,
                                  const Fetch& fetch) {
    std::vector<std::string> wanted(names.size());
    std::transform(names.begin(), names.end(), wanted.begin(),
                   [&](const std::string& name) { return relativePath(joinPath(path, name)); });
    dropFilesBut(wanted);
    std::string directory = own() + "/archives/" + relativePath(path);
    makeDirectory(directory);
    for (const std::string& file : wanted) {
        if (std::find(collected_.begin(), collected_.end(), file) == collected_.end()) {
            const std::string place = own() + "/archives/" + file;
            makeDirectory(parentOf(place));
            fetch(file, place);
            collected_.push_back(file);
        }
    }
    return directory;
}

// An archive may be as big as the disk has room for one.
void FtpReceiving::dropFilesBut(const std::vector<std::string>& wanted) {
    std::erase_if(collected_, [&](const std::string& file) {
        const bool isWanted = std::find(wanted.begin(), wanted.end(), file) != wanted.end();
        if (!isWanted) {
            boost::system::error_code gone;
            fs::remove(own() + "/archives/" + file, gone);
        }
        return !isWanted;
    });
}

}  // namespace zelvo
