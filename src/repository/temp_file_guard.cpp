#include "repository/temp_file_guard.h"

#include <boost/filesystem/operations.hpp>

#include "commons/temp_names.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

std::string GetTempFilePath() { return RMK_getTempFileName("", "repository-"); }

TempFileGuard::~TempFileGuard() {
    try {
        remove();
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
    }
}

void TempFileGuard::remove() {
    boost::system::error_code error;
    const std::string path = std::exchange(path_, "");
    if (!path.empty() && !boost::filesystem::remove(path, error) && error) {
        throw EXC(TransportError) %
            ("Unable to delete temporary file " + path + ": " + error.message());
    }
}

TempDirGuard::TempDirGuard() : path_(RMK_makeTempFileDirectory("", "repository-")) {}

TempDirGuard::~TempDirGuard() {
    boost::system::error_code error;
    boost::filesystem::remove_all(path_, error);
    if (error) {
        LogError("Unable to delete temporary directory " + path_ + ": " + error.message());
    }
}

}  // namespace zelvo
