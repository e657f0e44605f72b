#include "content/handed_dump.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "content/content_errors.h"
#include "exec/beneath.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPlainName = "database-dump";

bool isPlain(const std::string& name) {
    constexpr const char* kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._/@+-";
    return !name.starts_with('-') && name.find_first_not_of(kPlain) == std::string::npos;
}

// Gives what openBeneath has reached to root and a group. Returns 0 or an error number.
int giveFile(const Descriptor& file, gid_t group, mode_t mode) {
    const std::string path = "/proc/self/fd/" + std::to_string(file.get());
    return chown(path.c_str(), 0, group) == 0 && chmod(path.c_str(), mode) == 0 ? 0 : errno;
}

// Whoever has no rights passes through a directory by what it grants to all.
void requireOpenParents(const std::string& directory) {
    for (fs::path parent = fs::canonical(directory); parent.has_relative_path();) {
        parent = parent.parent_path();
        struct stat status {};
        if (stat(parent.c_str(), &status) != 0 || (status.st_mode & S_IXOTH) == 0) {
            throw EXC(UnExpectedResult) %
                ("the directory " + parent.string() +
                 " of temporary files is closed to the account that loads database dumps");
        }
    }
}

}  // namespace

HandedDump::HandedDump(const std::string& directory, const std::vector<std::string>& names)
    : directory_(directory) {
    takeFirst(names);
    makePlain();
    requireOpenParents(directory_);
    handOver();
}

void HandedDump::takeFirst(const std::vector<std::string>& names) {
    std::string first;
    for (const std::string& name : names) {
        if (name.ends_with('/')) {
            // A directory.
        } else if (first.empty()) {
            first = name;
        } else {
            others_ += (others_.empty() ? "" : ", ") + name;
        }
    }
    path_ = directory_ + "/" + first;
    // Through a link the client would be led to a file of this server.
    if (typeBeneath(directory_, path_) != S_IFREG) {
        throw EXC(UnExpectedResult) % "the archive does not hold one database dump";
    }
}

void HandedDump::makePlain() {
    if (isPlain(path_.substr(directory_.size() + 1))) {
        return;
    }
    const std::string plain = directory_ + "/" + kPlainName;
    if (rename(path_.c_str(), plain.c_str()) != 0) {
        throw EXC(UnExpectedResult) % (plain + ": " + strerror(errno));
    }
    path_ = plain;
}

int HandedDump::giveTo(gid_t group) const {
    constexpr mode_t kPassThrough = 0710;
    constexpr mode_t kRead = 0440;
    for (std::size_t end = directory_.size(); end != std::string::npos;
         end = path_.find('/', end + 1)) {
        const Descriptor step = openBeneath(directory_, path_.substr(0, end));
        struct stat status {};
        // A link on the way stays as it is.
        if (fstat(step.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
            if (const int error = giveFile(step, group, kPassThrough); error != 0) {
                return error;
            }
        }
    }
    return giveFile(openBeneath(directory_, path_), group, kRead);
}

void HandedDump::handOver() {
    struct stat status {};
    if (fstat(openBeneath(directory_, path_).get(), &status) != 0 || status.st_nlink != 1) {
        // It may be a file from elsewhere.
        throw EXC(UnExpectedResult) % "the database dump has more than one name";
    }
    int error = giveTo(reader_.group());
    if (error == EINVAL || error == EOVERFLOW) {
        theDebugLog->log(
            std::string("A database dump is loaded under a number below 65536: this machine has no "
                        "other for an account without rights"));
        const std::optional<Outsider> small = Outsider::uniqueOfSmall();
        reader_ = small.value_or(reader_);
        error = giveTo(reader_.group());
    }
    if (error != 0) {
        throw EXC(UnExpectedResult) %
            ("no database dump in the directory " + directory_ +
             " can be given to the account that loads it: " +
             (error == EINVAL ? "this machine has no number for one without rights"
                              : strerror(error)));
    }
}

}  // namespace zelvo
