#include "repository/files_transaction.h"

#include <algorithm>

#include "commons/termination.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// Removes an entry; its failure is told.
template <class Remove>
void removeOne(const std::string& path, Remove&& remove) {
    try {
        remove(path);
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
    }
}

// Removes each entry in order. A request to stop is raised once, and then no more: it must not
// leave what is to be undone.
template <class Remove>
void removeEach(const std::vector<std::string>& paths, Remove&& remove) {
    for (const std::string& path : paths) {
        try {
            removeOne(path, remove);
        } catch (const MigrationTerminatedException&) {
            removeOne(path, remove);
        }
    }
}

bool isDeeper(const std::string& path, const std::string& other) {
    return std::count(path.begin(), path.end(), '/') > std::count(other.begin(), other.end(), '/');
}

}  // namespace

void tFilesTransaction::Begin() {
    if (started_) {
        throw EXC(TransactionError) % "transaction already started";
    }
    started_ = true;
}

void tFilesTransaction::Commit() {
    requireStarted();
    finish();
}

void tFilesTransaction::Rollback() {
    requireStarted();
    removeEach(createdFiles_, [&](const std::string& path) { transport_->Delete(path); });
    std::stable_sort(createdDirs_.begin(), createdDirs_.end(), isDeeper);
    // What another operation has made there since is not this one's.
    removeEach(createdDirs_, [&](const std::string& path) { transport_->DeleteEmptyDir(path); });
    finish();
}

void tFilesTransaction::requireStarted() const {
    if (!started_) {
        throw EXC(TransactionError) % "transaction not started";
    }
}

void tFilesTransaction::finish() {
    createdFiles_.clear();
    createdDirs_.clear();
    started_ = false;
}

void tFilesTransaction::AddCreatedFile(const std::string& path) {
    if (started_) {
        createdFiles_.push_back(path);
    }
}

void tFilesTransaction::AddCreatedDir(const std::string& path) {
    if (started_) {
        createdDirs_.push_back(path);
    }
}

}  // namespace zelvo
