#include "restore/toolbox/pkg_version.h"

#include "lib/components.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

std::string getPkgVersion(const std::string& name) {
    char version[4096];
    if (!try_pkg_version(name.c_str(), version, sizeof(version))) {
        throw EXC(CantReadPkgVersion) % name % version;
    }
    return version;
}

}  // namespace zelvo
