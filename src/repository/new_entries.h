// What an operation of many files is about to make in a repository.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// Tells what will be new from what is there. Each directory is listed once.
class NewEntries {
  public:
    // transport: must outlive it.
    explicit NewEntries(tRepositoryTransport& transport) : transport_(transport) {}

    // Notes an entry and the directories above it, as far as they are not there yet. path: relative
    // to the transport; a directory ends in "/". Returns the path of what is there and would be
    // overwritten, or is no directory where one is needed; empty if there is no such. Raises what
    // normalPath raises, and the failures of the transport.
    std::string note(const std::string& path);

    // What was noted and is not there, directories with "/" at their end and in front of what is in
    // them.
    const std::vector<std::string>& made() const { return made_; }

  private:
    // As note, of a directory without "/" at its end.
    std::string noteDir(const std::string& dir);
    bool isListed(const std::string& path);

    tRepositoryTransport& transport_;
    // The names in the directories that are there.
    std::map<std::string, std::set<std::string>> listings_;
    std::set<std::string> there_;
    std::set<std::string> new_;
    std::vector<std::string> made_;
};

}  // namespace zelvo
