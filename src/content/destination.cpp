#include "content/destination.h"

#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem/path.hpp>
#include <cerrno>
#include <cstring>
#include <new>
#include <tuple>

#include "commons/files.h"
#include "content/content_errors.h"

namespace zelvo {

namespace {

enum class Kind { kMissing, kDirectory, kOther };

Kind kindOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return Kind::kMissing;
    }
    return S_ISDIR(status.st_mode) ? Kind::kDirectory : Kind::kOther;
}

void makeOne(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
    if (mkdir(path.c_str(), 0777) != 0) {
        throw EXC(CantCreateDirectory) % path % strerror(errno);
    }
    if (mode != 0) {
        std::ignore = chmod(path.c_str(), mode);
    }
    std::ignore = lchown(path.c_str(), owner, group);
}

}  // namespace

void create_destdir(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
    if (kindOf(path) == Kind::kDirectory) {
        return;
    }
    boost::filesystem::path prefix;
    for (const auto& component : boost::filesystem::path(path).lexically_normal()) {
        if (component.empty() || component == ".") {
            continue;
        }
        prefix /= component;
        switch (kindOf(prefix.string())) {
            case Kind::kDirectory:
                break;
            case Kind::kOther:
                throw EXC(CantCreateDirectory) % prefix.string() %
                    "path component is not a directory";
            case Kind::kMissing:
                makeOne(prefix.string(), owner, group, mode);
        }
    }
}

std::string aboveOffset(const std::string& destination, const std::string& offset) {
    return destination.ends_with(offset) ? destination.substr(0, destination.size() - offset.size())
                                         : destination;
}

std::string getVhostDir(const std::string& domain) {
    try {
        return files::getVhostDir(domain);
    } catch (const std::bad_alloc&) {
        throw EXC(IDNConversationError) % "Program failed due to exhausted memory";
    } catch (const std::exception& failure) {
        throw EXC(IDNConversationError) % failure.what();
    }
}

}  // namespace zelvo
