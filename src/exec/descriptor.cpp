#include "exec/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace zelvo {

namespace {

// Gives a descriptor a number above the standard streams.
bool liftAboveStandardStreams(Descriptor& end) {
    if (end.get() <= STDERR_FILENO) {
        const int lifted = fcntl(end.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (lifted < 0) {
            return false;
        }
        end.reset(lifted);
    }
    return true;
}

}  // namespace

void Descriptor::reset(int fd) noexcept {
    if (fd_ >= 0) {
        const int savedErrno = errno;
        close(fd_);
        errno = savedErrno;
    }
    fd_ = fd;
}

int moveDescriptor(int source, int target) noexcept {
    if (source == target) {
        return target;
    }
    const int result = dup2(source, target);
    close(source);
    return result;
}

bool PipeEnds::open() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    readEnd.reset(ends[0]);
    writeEnd.reset(ends[1]);
    return liftAboveStandardStreams(readEnd) && liftAboveStandardStreams(writeEnd);
}

}  // namespace zelvo
