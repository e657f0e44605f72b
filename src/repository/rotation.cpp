#include "repository/rotation.h"

#include <algorithm>
#include <iterator>

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

std::string verdict(const std::string& head, const char* before, const std::string& name,
                    const char* behind) {
    return head + before + name + behind;
}

}  // namespace

void removeOldest(std::vector<PrefixFileList> backups, int keep, const std::string& head,
                  const std::function<void(const std::string&)>& log,
                  const std::function<void(const std::string&)>& remove) {
    std::sort(backups.begin(), backups.end());
    const auto count = std::ssize(backups) - keep;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::string& name = backups[static_cast<std::size_t>(i)].files.front();
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
