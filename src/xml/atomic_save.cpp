// The replacement of a file in one step: a new file beside it is written, given to the panel and
// renamed over it.
#include <fcntl.h>
#include <unistd.h>

#include <boost/filesystem/path.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commons/temp_names.h"
#include "lib/zelvo_ugid.h"
#include "xml/xml_document.h"
#include "xml/xml_errors.h"

namespace zelvo {

namespace {

// Waits until a file or a directory has reached the disk; false with errno set.
bool syncToDisk(const std::string& path) {
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    const bool isSynced = fsync(fd) == 0;
    const int number = errno;
    close(fd);
    errno = number;
    return isSynced;
}

bool giveToPanel(const std::string& path) {
    uid_t user = 0;
    gid_t group = 0;
    return zelvo_ugid("qrdadm", &user, &group) == 0 && chown(path.c_str(), user, group) == 0;
}

}  // namespace

void tXmlDocument::saveToFileAtomically(const std::string& path, Durability durability) {
    const boost::filesystem::path target(path);
    const std::string directory = target.parent_path().string();
    const std::string temporary = RMK_getTempFileName(directory, target.filename().string());
    saveToFile(temporary);
    if (!giveToPanel(temporary)) {
        const int number = errno;
        throw EXC(CantTakeFileOwnership) % temporary % strerror(number);
    }
    if (durability == Durability::kSynced && !syncToDisk(temporary)) {
        throw EXC(tError_SaveFile) % temporary;
    }
    if (rename(temporary.c_str(), path.c_str()) != 0) {
        const int number = errno;
        throw EXC(CantRenameFile) % temporary % path % strerror(number);
    }
    if (durability == Durability::kSynced) {
        // The new name: the document is in place whatever comes of this, and some file systems do
        // not sync directories at all.
        syncToDisk(directory.empty() ? "." : directory);
    }
}

}  // namespace zelvo
