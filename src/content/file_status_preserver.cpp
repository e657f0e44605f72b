#include "content/file_status_preserver.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "content/content_errors.h"

namespace zelvo {

FileStatusPreserver::FileStatusPreserver(const std::string& path) : path_(path) {
    if (stat(path.c_str(), &status_) != 0) {
        throw EXC(CantStatFile) % path % strerror(errno);
    }
}

FileStatusPreserver::~FileStatusPreserver() {
    std::ignore = chmod(path_.c_str(), status_.st_mode & 07777);
    std::ignore = chown(path_.c_str(), status_.st_uid, status_.st_gid);
}

}  // namespace zelvo
