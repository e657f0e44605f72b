#include "restore/objects/file_list.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <ostream>

#include "content/content_errors.h"
#include "report/debug_log.h"

namespace zelvo {

void saveFilelist(const std::vector<std::string>& files, std::ostream& stream) {
    for (const std::string& file : files) {
        stream << file << '\n';
    }
}

void removeFilelist(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        if (unlink(file.c_str()) != 0 && errno != ENOENT) {
            theDebugLog->log("Cannot remove file '" + file + "': " + strerror(errno));
        }
    }
}

std::vector<std::string> reduceFileList(const std::string& root,
                                        const std::vector<std::string>& files) {
    std::vector<std::string> reduced;
    for (const std::string& file : files) {
        const std::string path = std::filesystem::path(file).lexically_normal().string();
        if (!path.starts_with(root + "/")) {
            throw EXC(UnsafeName) % file % "an application's file" % "it is in another place";
        }
        reduced.push_back(path.substr(root.size() + 1));
    }
    return reduced;
}

}  // namespace zelvo
