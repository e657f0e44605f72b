// What is not there yet when files are about to be written.
#pragma once

#include <set>
#include <string>

#include "repository/transport.h"

namespace zelvo {

// Whether there is nothing at a path yet. Raises the failures of the transport: what it could not
// look for is not new.
bool isNewDir(tRepositoryTransport& transport, const std::string& path);

// The directories that will be made for files.
class NewDirs {
  public:
    // transport: must outlive it.
    explicit NewDirs(tRepositoryTransport& transport) : transport_(transport) {}

    // Whether a directory is not there yet; notes the topmost one above it that is not.
    bool contain(const std::string& dir);
    // All that were noted.
    const std::set<std::string>& made() const { return made_; }

  private:
    tRepositoryTransport& transport_;
    std::set<std::string> there_;
    std::set<std::string> made_;
};

}  // namespace zelvo
