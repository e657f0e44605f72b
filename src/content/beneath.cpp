#include "content/beneath.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>
#include <tuple>
#include <utility>

#include "content/content_errors.h"

namespace zelvo {

namespace {

// What follows the directory and its slashes; "." for the directory itself.
std::string relativePath(const std::string& directory, const std::string& path) {
    const std::size_t start = path.find_first_not_of('/', directory.size());
    return start == std::string::npos ? "." : path.substr(start);
}

// Returns whether it is as new as that.
bool removeIfNew(const std::string& directory, const std::filesystem::path& path,
                 const timespec& since) {
    const Descriptor parent = openDirectoryBeneath(directory, path.parent_path());
    const std::string name = path.filename();
    struct stat status {};
    if (fstatat(parent.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        std::tie(status.st_ctim.tv_sec, status.st_ctim.tv_nsec) <
            std::tie(since.tv_sec, since.tv_nsec)) {
        return false;
    }
    std::ignore = unlinkat(parent.get(), name.c_str(), 0);
    return true;
}

}  // namespace

Descriptor openBeneath(const std::string& directory, const std::string& path) {
    if (!path.starts_with(directory)) {
        return Descriptor();
    }
    const Descriptor root(open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    open_how how{};
    how.flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const std::string relative = relativePath(directory, path);
    return Descriptor(
        static_cast<int>(syscall(SYS_openat2, root.get(), relative.c_str(), &how, sizeof(how))));
}

Descriptor openDirectoryBeneath(const std::string& directory, const std::string& path) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    Descriptor reached(open(directory.c_str(), kFlags));
    std::istringstream components(path.substr(directory.size()));
    for (std::string name; reached.isOpen() && std::getline(components, name, '/');) {
        if (!name.empty() && name != ".") {
            const Descriptor above = std::move(reached);
            reached = Descriptor(openat(above.get(), name.c_str(), kFlags | O_NOFOLLOW));
        }
    }
    return reached;
}

mode_t typeBeneath(const std::string& directory, const std::string& path) {
    const Descriptor file = openBeneath(directory, path);
    struct stat status {};
    return fstat(file.get(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

void lchownBeneath(const std::string& directory, const std::string& path, uid_t owner,
                   gid_t group) {
    const Descriptor file = openBeneath(directory, path);
    std::ignore = fchownat(file.get(), "", owner, group, AT_EMPTY_PATH);
}

void chmodBeneath(const std::string& directory, const std::string& path, mode_t mode) {
    const Descriptor file = openBeneath(directory, path);
    // fchmod refuses a descriptor that is a reference only; this is the same file, and not what it
    // names if it is a link.
    std::ignore = chmod(("/proc/self/fd/" + std::to_string(file.get())).c_str(), mode);
}

void refuseLinks(const std::string& path) {
    namespace fs = std::filesystem;
    const auto check = [](const fs::path& name, const fs::file_status& status) {
        if (status.type() != fs::file_type::not_found && status.type() != fs::file_type::regular &&
            status.type() != fs::file_type::directory) {
            throw EXC(UnExpectedResult) % (name.string() + " is neither a file nor a directory");
        }
    };
    std::error_code error;
    check(path, fs::symlink_status(path, error));
    for (fs::recursive_directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        check(entry->path(), entry->symlink_status(error));
    }
}

std::string removeIrregular(const std::string& directory, const timespec& since) {
    namespace fs = std::filesystem;
    std::string first;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        const fs::file_type type = entry->symlink_status(ignored).type();
        if (type != fs::file_type::regular && type != fs::file_type::directory &&
            removeIfNew(directory, entry->path(), since) && first.empty()) {
            first = entry->path();
        }
    }
    return first;
}

bool hasParentStep(const std::string& path) {
    return ("/" + path + "/").find("/../") != std::string::npos;
}

}  // namespace zelvo
