#include "content/file_status_preserver.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "content/content_errors.h"
#include "exec/destination_directory.h"

namespace zelvo {

FileStatusPreserver::FileStatusPreserver(const std::string& path)
    : directory_(openDestination(path)) {
    if (fstat(directory_.get(), &status_) != 0) {
        throw EXC(CantStatFile) % path % strerror(errno);
    }
}

FileStatusPreserver::~FileStatusPreserver() {
    std::ignore = fchmod(directory_.get(), status_.st_mode & 07777);
    std::ignore = fchown(directory_.get(), status_.st_uid, status_.st_gid);
}

}  // namespace zelvo
