#include "exec/beneath.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <sstream>
#include <tuple>
#include <utility>

#include "commons/errors.h"

namespace zelvo {

namespace {

// What follows the directory and its slashes; "." for the directory itself.
std::string relativePath(const std::string& directory, const std::string& path) {
    const std::size_t start = path.find_first_not_of('/', directory.size());
    return start == std::string::npos ? "." : path.substr(start);
}

// flags: 0, or O_NOFOLLOW for a link at the end.
Descriptor resolveBeneath(const std::string& directory, const std::string& path, unsigned flags) {
    if (!path.starts_with(directory)) {
        return Descriptor();
    }
    const Descriptor root(open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    open_how how{};
    how.flags = O_PATH | O_CLOEXEC | flags;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const std::string relative = relativePath(directory, path);
    return Descriptor(
        static_cast<int>(syscall(SYS_openat2, root.get(), relative.c_str(), &how, sizeof(how))));
}

mode_t typeOf(const Descriptor& file) {
    struct stat status {};
    return fstat(file.get(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

using IsFine = std::function<bool(const std::string& link)>;

void requireRegular(const std::filesystem::path& path, std::filesystem::file_type type,
                    const IsFine& isFine) {
    using Type = std::filesystem::file_type;
    if (type != Type::regular && type != Type::directory &&
        (type != Type::symlink || !isFine(path))) {
        throw EXC(UnExpectedResult) % (path.string() + " is neither a file nor a directory");
    }
}

void requireRegularBelow(const std::string& path, const IsFine& isFine) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_type top = fs::symlink_status(path, error).type();
    if (top == fs::file_type::not_found) {
        return;
    }
    requireRegular(path, top, [](const std::string&) { return false; });
    if (top == fs::file_type::directory) {
        for (fs::recursive_directory_iterator entry(path, error), end; !error && entry != end;
             entry.increment(error)) {
            const fs::file_type type = entry->symlink_status(error).type();
            if (type != fs::file_type::not_found) {
                requireRegular(entry->path(), type, isFine);
            }
        }
    }
    // What could not be looked at is not known to be regular; what has gone meanwhile is gone.
    if (error && error != std::errc::no_such_file_or_directory) {
        throw EXC(UnExpectedResult) % (path + " can not be looked through: " + error.message());
    }
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
    return resolveBeneath(directory, path, O_NOFOLLOW);
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
    return typeOf(openBeneath(directory, path));
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
    requireRegularBelow(path, [](const std::string&) { return false; });
}

void refuseLinksOut(const std::string& directory) {
    requireRegularBelow(directory, [&](const std::string& link) {
        const mode_t type = typeOf(resolveBeneath(directory, link, 0));
        return type == S_IFREG || type == S_IFDIR;
    });
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

}  // namespace zelvo
