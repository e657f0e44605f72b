#include "content/unpack_directory.h"

#include <unistd.h>

#include <tuple>

#include "commons/temp_names.h"
#include "content/accounts.h"
#include "exec/log_exec_cmd.h"
#include "lib/zelvo_ugid.h"
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

void UnpackDirectory::openToPanel() const {
    uid_t user = 0;
    gid_t group = 0;
    if (zelvo_ugid(accounts::kPanel, &user, &group) == 0) {
        std::ignore = chown(path_.c_str(), user, group);
    }
}

}  // namespace zelvo
