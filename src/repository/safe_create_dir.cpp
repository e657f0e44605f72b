#include "repository/safe_create_dir.h"

#include <boost/filesystem/operations.hpp>

#include "repository/repository_log.h"

namespace zelvo {

bool SafeCreateDir(const std::string& path) {
    boost::system::error_code error;
    boost::filesystem::create_directories(path, error);
    if (error) {
        LogMsg("Error: " + error.message());
    }
    return !error;
}

}  // namespace zelvo
