#include "repository/archive_volumes.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>

#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/urls.h"

namespace zelvo {

namespace {

namespace fs = boost::filesystem;

// The local file of a volume. Without this a part that is missing in the middle would show when
// what is in front of it has been unpacked, and a pipe would be read without end.
std::string requireVolume(const std::string& directory, const std::string& name) {
    std::string path = fs::absolute(joinPath(directory, relativePath(name))).string();
    boost::system::error_code error;
    if (!fs::is_regular_file(path, error)) {
        throw EXC(TransportError) % ("File '" + path + "' not found");
    }
    return path;
}

}  // namespace

std::vector<std::string> bringVolumes(tRepositoryTransport& transport,
                                      const std::vector<std::string>& volumes) {
    std::string base;
    std::vector<std::string> names;
    DecomposeUrls(volumes, base, names);
    const std::string directory = transport.GetLocalDirFiles(base, names);
    std::vector<std::string> files(names.size());
    std::transform(names.begin(), names.end(), files.begin(),
                   [&](const std::string& name) { return requireVolume(directory, name); });
    return files;
}

}  // namespace zelvo
