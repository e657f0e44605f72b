#include "content/unpacked_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <utility>

#include "report/debug_log.h"

namespace zelvo {

UnpackedFile::UnpackedFile(std::string path) : path_(std::move(path)) {}

UnpackedFile::~UnpackedFile() {
    if (unlink(path_.c_str()) == 0 || errno == ENOENT) {
        return;
    }
    const int number = errno;
    try {
        theDebugLog->log("Can not remove temporary file: '" + path_ + "': " + strerror(number));
    } catch (const std::exception&) {
        // Only a lack of memory comes here. The failure that is under way says more.
        return;
    }
}

}  // namespace zelvo
