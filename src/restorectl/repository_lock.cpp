#include "restorectl/repository_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "repository/repository_errors.h"

namespace zelvo {

RepositoryLock::RepositoryLock(const std::string& directory)
    : fd_(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (fd_ != -1 && flock(fd_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(fd_);
        throw EXC(RepositoryError) % ("another run is writing to '" + directory + "'");
    }
}

RepositoryLock::~RepositoryLock() {
    if (fd_ != -1) {
        close(fd_);
    }
}

}  // namespace zelvo
