// What keeps two runs from writing to one repository.
#pragma once

#include "restorectl/settings.h"

namespace zelvo {

// Held while it lives, on the directory of a local repository itself (flock(2)), so that nothing is
// left in it. An FTP server has no such thing: nothing is locked there.
class RepositoryLock {
  public:
    // directory: a local one, or a URL of FTP. Raises RepositoryError when another run holds the
    // lock. A directory that is not there yet is nobody's.
    explicit RepositoryLock(const std::string& directory);
    ~RepositoryLock();
    RepositoryLock(const RepositoryLock&) = delete;
    RepositoryLock& operator=(const RepositoryLock&) = delete;

  private:
    int fd_;
};

}  // namespace zelvo
