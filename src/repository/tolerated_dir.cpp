#include "repository/tolerated_dir.h"

namespace zelvo {

void tellUnlistedDir(tRepositoryTransport& transport, const std::string& dir,
                     const std::string& reason) {
    LogError("Error: unable to list directory '" + dir + "': " + reason);
    raiseIfLost(transport);
}

void raiseIfLost(tRepositoryTransport& transport) {
    bool isThere = false;
    toleratedInWords([&] { isThere = transport.IsDirExist(""); }, "unknown error",
                     [](const std::string& loss) { LogMsg(loss); });
    if (!isThere) {
        throw;
    }
}

}  // namespace zelvo
