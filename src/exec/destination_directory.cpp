#include "exec/destination_directory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/filesystem/path.hpp>
#include <cerrno>
#include <cstring>
#include <tuple>
#include <vector>

#include "commons/errors.h"
#include "commons/files.h"
#include "exec/beneath.h"

namespace zelvo {

namespace {

enum class Kind { kMissing, kDirectory, kOther };

Kind kindOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return Kind::kMissing;
    }
    return S_ISDIR(status.st_mode) ? Kind::kDirectory : Kind::kOther;
}

// The path and all that it lies in, from the root down.
std::vector<std::string> prefixesOf(const std::string& path) {
    std::vector<std::string> prefixes;
    boost::filesystem::path prefix;
    for (const auto& component : boost::filesystem::path(path).lexically_normal()) {
        if (!component.empty() && component != ".") {
            prefix /= component;
            prefixes.push_back(prefix.string());
        }
    }
    return prefixes;
}

bool isRootsAlone(const struct stat& status) {
    return status.st_uid == 0 && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Where archives are unpacked, and how many directories below it are still made by the panel.
struct Yard {
    std::string directory;
    int panelDepth;
};

// The path without doubled slashes, "." and a slash at its end.
std::string normalForm(const std::string& path) {
    std::string normal = boost::filesystem::path(path).lexically_normal().string();
    while (normal.size() > 1 && (normal.ends_with('/') || normal.ends_with("/."))) {
        normal.pop_back();
    }
    return normal;
}

// The part of a path whose links are judged by their owners. Behind it archives put what they wish,
// with any owner, so that a link there tells nothing about who made it. path: in its normal form.
std::string trustedPart(const std::string& path) {
    const Yard yards[] = {{files::getTmpDir(), 0},
                          {files::getVhostsDir(), 1},
                          {files::getMailDir(), 1},
                          {files::getMailmanVarDir() + "/archives/private", 0}};
    for (const Yard& yard : yards) {
        const std::string directory = normalForm(yard.directory);
        if (path.starts_with(directory + "/")) {
            std::size_t end = directory.size();
            for (int depth = 0; depth < yard.panelDepth && end != std::string::npos; ++depth) {
                end = path.find('/', end + 1);
            }
            return path.substr(0, end);
        }
    }
    return path;
}

// Raises CantCreateDirectory for a link on the way that somebody else than the machine's
// administrator can have made: a customer in a directory of his own, or an earlier archive.
// Unpacking through it would reach whatever its author wished.
void refuseUntrustedLink(const std::string& path) {
    struct stat link {};
    if (lstat(path.c_str(), &link) != 0 || !S_ISLNK(link.st_mode)) {
        return;
    }
    struct stat around {};
    const std::string parent = boost::filesystem::path(path).parent_path().string();
    if (link.st_uid != 0 || path.size() > trustedPart(path).size() ||
        stat(parent.empty() ? "." : parent.c_str(), &around) != 0 || !isRootsAlone(around)) {
        throw EXC(CantCreateDirectory) % path %
            "path component is a link that others than root may have made";
    }
}

// The new directory is reached by its descriptor: its name can be taken over in a directory of a
// customer's.
void makeOne(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
    const boost::filesystem::path whole(path);
    const std::string parent = whole.parent_path().string();
    const std::string name = whole.filename().string();
    const Descriptor above = openDestination(parent.empty() ? "." : parent);
    if (mkdirat(above.get(), name.c_str(), 0777) != 0) {
        throw EXC(CantCreateDirectory) % path % strerror(errno);
    }
    const Descriptor made(
        openat(above.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!made.isOpen()) {
        throw EXC(CantCreateDirectory) % path % strerror(errno);
    }
    if (mode != 0) {
        std::ignore = fchmod(made.get(), mode);
    }
    std::ignore = fchown(made.get(), owner, group);
}

}  // namespace

void create_destdir(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
    const std::vector<std::string> prefixes = prefixesOf(path);
    std::for_each(prefixes.begin(), prefixes.end(), refuseUntrustedLink);
    if (kindOf(path) == Kind::kDirectory) {
        return;
    }
    for (const std::string& prefix : prefixes) {
        switch (kindOf(prefix)) {
            case Kind::kDirectory:
                break;
            case Kind::kOther:
                throw EXC(CantCreateDirectory) % prefix % "path component is not a directory";
            case Kind::kMissing:
                makeOne(prefix, owner, group, mode);
        }
    }
}

Descriptor openDestination(const std::string& path) {
    const std::string normal = normalForm(path);
    Descriptor directory = openDirectoryBeneath(trustedPart(normal), normal);
    if (!directory.isOpen()) {
        throw EXC(CantStatFile) % path % strerror(errno);
    }
    return directory;
}

}  // namespace zelvo
