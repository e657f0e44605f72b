#include "content/unpack_directory.h"

#include "commons/temp_names.h"
#include "exec/log_exec_cmd.h"
#include "report/debug_log.h"

namespace zelvo {

void cleanTempDir(const std::string& path) noexcept {
    try {
        tLogExecCmd rm("rm");
        rm << "-rf" << path;
        rm.exec();
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
        theDebugLog->log("Can not remove temporary directory: '" + path +
                         "' due to the error above. It is not fatal error");
    } catch (...) {
        theDebugLog->log("Cant remove temporary directory: '" + path +
                         "' due to unknown error. It is not fatal error");
    }
}

UnpackDirectory::UnpackDirectory(const std::string& parent)
    : path_(RMK_makeTempFileDirectory(parent, "migration-unpack-")), toClean_(path_) {}

UnpackDirectory::~UnpackDirectory() { cleanTempDir(toClean_); }

}  // namespace zelvo
