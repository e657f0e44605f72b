#include "repository/local_streams.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "repository/repository_errors.h"

namespace zelvo {

void tLocalInStream::open() {
    if (is_open()) {
        return;
    }
    // A pipe would be waited for without end, and a device may have none.
    struct stat status {};
    if (stat(path_.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        raise(S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "it is no file");
    }
    errno = 0;
    std::ifstream::open(path_, std::ios::in | std::ios::binary);
    if (!is_open()) {
        raise(std::strerror(errno));
    }
}

void tLocalInStream::raise(const char* reason) const {
    throw EXC(TransportError) % ("unable to read file " + name_ + ": " + reason);
}

tLocalOutStream::~tLocalOutStream() {
    if (isHalf_) {
        unlink(path_.c_str());
    }
}

void tLocalOutStream::open() {
    if (is_open()) {
        return;
    }
    struct stat status {};
    const bool isNew = lstat(path_.c_str(), &status) != 0 && errno == ENOENT;
    // Nobody may read from a pipe.
    if (stat(path_.c_str(), &status) == 0 && S_ISFIFO(status.st_mode)) {
        raise(ENXIO);
    }
    errno = 0;
    std::ofstream::open(path_, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!is_open()) {
        raise(errno);
    }
    isHalf_ = isNew;
}

void tLocalOutStream::close() {
    if (!is_open()) {
        return;
    }
    errno = 0;
    const bool isWhole = !flush().fail();
    const int number = errno;
    std::ofstream::close();
    if (!isWhole || std::ofstream::fail()) {
        raise(number != 0 ? number : errno);
    }
    isHalf_ = false;
}

void tLocalOutStream::raise(int number) const {
    const char* const reason = number != 0 ? std::strerror(number) : "not all of it was written";
    throw TransportException(
        EXC(TransportError) % ("unable to write file " + name_ + ": " + reason),
        TransportOperationStatus::kUnspecified);
}

}  // namespace zelvo
