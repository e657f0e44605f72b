#include "repository/rotation.h"

#include <algorithm>

#include "report/termination_lines.h"
#include "repository/tolerated.h"

namespace zelvo {

void requireRotationCount(int keep) {
    if (keep < 0) {
        throw RepositoryException(
            EXC(RepositoryError) % ("rotation count " + std::to_string(keep) + " is negative"),
            RepositoryOperationStatus::kUnspecified);
    }
}

namespace {

// Sorts backups, the oldest first. Returns how many of them are too many.
std::size_t sortOldest(std::vector<PrefixFileList>& backups, int keep) {
    std::sort(backups.begin(), backups.end());
    const auto count = static_cast<std::size_t>(keep);
    return backups.size() > count ? backups.size() - count : 0;
}

std::string verdict(const std::string& head, const char* before, const std::string& name,
                    const char* behind) {
    return head + before + name + behind;
}

}  // namespace

std::vector<RotationDecision> planRotation(std::vector<PrefixFileList> backups, int keep) {
    const std::size_t count = sortOldest(backups, keep);
    const std::string newest = "the newest " + std::to_string(keep);
    std::vector<RotationDecision> decisions;
    for (std::size_t i = 0; i < backups.size(); ++i) {
        const bool isRemoved = i < count;
        decisions.push_back({backups[i].files.front(), isRemoved,
                             (isRemoved ? "is older than " : "is among ") + newest});
    }
    return decisions;
}

void removeOldest(std::vector<PrefixFileList> backups, int keep, const std::string& head,
                  const std::function<void(const std::string&)>& log,
                  const std::function<void(const std::string&)>& remove) {
    const std::size_t count = sortOldest(backups, keep);
    for (std::size_t i = 0; i < count; ++i) {
        checkProgramTerminated();
        const std::string& name = backups[i].files.front();
        const std::string refusal = verdict(head, "Cannot delete backup '", name, "'due to ");
        log("Rotation: Remove backup:");
        const bool isGone = tolerated([&] { remove(name); },
                                      [&](const ExTraceable& failure) {
                                          LogMsg(failure);
                                          log(refusal + "errors above");
                                      },
                                      [&] { log(refusal + "unknown error"); });
        if (isGone) {
            log(verdict(head, "The backup '", name, "'have been remove"));
        }
    }
}

}  // namespace zelvo
