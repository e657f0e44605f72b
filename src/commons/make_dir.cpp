#include "commons/make_dir.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "commons/handle.h"

namespace zelvo {

namespace {

bool isMissing(const char* path) {
    struct stat status = {};
    return stat(path, &status) != 0 && errno == ENOENT;
}

}  // namespace

void make_dir(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
    const Handle<char*> copy(strdup(path.c_str()));
    make_dir(copy.get(), owner, group, mode);
}

void make_dir(const boost::filesystem::path& path, uid_t owner, gid_t group, mode_t mode) {
    make_dir(path.string(), owner, group, mode);
}

void make_dir(char* path, uid_t owner, gid_t group, mode_t mode) {
    if (!isMissing(path)) {
        return;
    }
    char* const slash = strrchr(path, '/');
    if (slash != nullptr && slash != path) {
        *slash = '\0';
        make_dir(path, owner, group, mode);
        *slash = '/';
    }
    // The caller sees for itself whether the directory is there and whose it is.
    mkdir(path, mode);
    [[maybe_unused]] const int ignored = chown(path, owner, group);
}

}  // namespace zelvo
