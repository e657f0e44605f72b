#include "repository/new_dirs.h"

namespace zelvo {

bool isNewDir(tRepositoryTransport& transport, const std::string& path) {
    // A server that lists no directories knows them all the same, and one that could not be asked
    // for a directory fails when it is to list.
    return !transport.IsDirExist(path) && !transport.IsExist(path);
}

bool NewDirs::contain(const std::string& dir) {
    for (auto end = dir.find('/');; end = dir.find('/', end + 1)) {
        const std::string upper = dir.substr(0, end);
        if (!upper.empty() && !there_.contains(upper)) {
            if (made_.contains(upper) || isNewDir(transport_, upper)) {
                made_.insert(upper);
                return true;
            }
            there_.insert(upper);
        }
        if (end == std::string::npos) {
            return false;
        }
    }
}

}  // namespace zelvo
