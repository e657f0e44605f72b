#include "repository/ftp_streams.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "repository/ftp_failure.h"

namespace zelvo {

namespace {

void raiseSystemError(int number) {
    throw EXC(TransportError) % (number != 0 ? strerror(number) : "the local file failed");
}

}  // namespace

tFtpConnection& FtpFile::reach() const {
    connection->Init(url, login, password);
    return *connection;
}

tFtpInStream::tFtpInStream(FtpFile file, std::string localFile)
    : file_(std::move(file)), localFile_(std::move(localFile)) {}

tFtpInStream::~tFtpInStream() { unlink(localFile_.c_str()); }

void tFtpInStream::open() {
    if (is_open()) {
        return;
    }
    try {
        file_.reach().DownloadFile(localFile_);
        errno = 0;
        std::ifstream::open(localFile_, std::ios::in | std::ios::binary);
        if (!is_open()) {
            raiseSystemError(errno);
        }
    } catch (const ExTraceable& cause) {
        throw ftpFailure("unable to read file " + file_.path, cause);
    }
    // What is open stays readable.
    unlink(localFile_.c_str());
}

tFtpOutStream::tFtpOutStream(FtpFile file, std::string localFile)
    : file_(std::move(file)), localFile_(std::move(localFile)) {}

tFtpOutStream::~tFtpOutStream() {
    std::ofstream::close();
    unlink(localFile_.c_str());
}

void tFtpOutStream::open() {
    if (is_open()) {
        return;
    }
    inTransportWords("unable to write file " + file_.path + ": ", [this] {
        errno = 0;
        std::ofstream::open(localFile_, std::ios::out | std::ios::binary | std::ios::trunc);
        if (!is_open()) {
            raiseSystemError(errno);
        }
    });
}

void tFtpOutStream::close() {
    if (!is_open()) {
        return;
    }
    inTransportWords("unable to write file " + file_.path + ": ", [this] {
        closeLocalFile();
        file_.reach().UploadFile(localFile_);
    });
    unlink(localFile_.c_str());
}

// What a full disk cut must not look like the whole file on the server.
void tFtpOutStream::closeLocalFile() {
    errno = 0;
    const bool isWhole = good();
    std::ofstream::close();
    if (!isWhole || fail()) {
        raiseSystemError(errno);
    }
}

}  // namespace zelvo
