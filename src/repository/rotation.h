// What the rotations of backups have in common.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace zelvo {

// One found backup.
struct PrefixFileList {
    std::string label;
    // Its files, without the path; the one that stands for the backup first.
    std::vector<std::string> files;

    bool operator<(const PrefixFileList& other) const { return label < other.label; }
};

// What a rotation does with one backup, and why.
struct RotationDecision {
    std::string name;
    bool isRemoved = false;
    std::string reason;
};

// Raises RepositoryException for a number of backups that is negative.
void requireRotationCount(int keep);

// What removeOldest does with each.
std::vector<RotationDecision> planRotation(std::vector<PrefixFileList> backups, int keep);

// Removes the oldest backups until keep are left. One that cannot be removed is told and counts as
// gone. log: writes a line. head: of the lines on one backup. remove: gets the name of a backup.
void removeOldest(std::vector<PrefixFileList> backups, int keep, const std::string& head,
                  const std::function<void(const std::string&)>& log,
                  const std::function<void(const std::string&)>& remove);

}  // namespace zelvo
