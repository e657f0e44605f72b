#include "repository/local_streams.h"

#include <sys/stat.h>

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
    if (stat(path_.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
        throw EXC(TransportError) % ("unable to read file " + path_ + ": it is no file");
    }
    errno = 0;
    std::ifstream::open(path_, std::ios::in | std::ios::binary);
    if (!is_open()) {
        throw EXC(TransportError) % ("unable to read file " + path_ + ": " + std::strerror(errno));
    }
}

void tLocalOutStream::open() {
    if (is_open()) {
        return;
    }
    errno = 0;
    std::ofstream::open(path_, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!is_open()) {
        raise(errno);
    }
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
}

void tLocalOutStream::raise(int number) const {
    const char* const reason = number != 0 ? std::strerror(number) : "not all of it was written";
    throw TransportException(
        EXC(TransportError) % ("unable to write file " + path_ + ": " + reason),
        TransportOperationStatus::kUnspecified);
}

}  // namespace zelvo
