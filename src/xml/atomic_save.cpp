// The replacement of a file in one step: a new file beside it is written, given to the panel and
// renamed over it.
#include <fcntl.h>
#include <unistd.h>

#include <boost/filesystem/path.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

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

struct Ids {
    uid_t user;
    gid_t group;
};

// The ids of the panel's administrator. Found once a run: a save takes place at every object. None
// with errno set when there is no such account.
const std::optional<Ids>& panelIds() {
    static std::optional<Ids> ids;
    Ids found{};
    if (!ids && zelvo_ugid("qrdadm", &found.user, &found.group) == 0) {
        ids = found;
    }
    return ids;
}

bool giveToPanel(const std::string& path) {
    const std::optional<Ids>& ids = panelIds();
    return ids && chown(path.c_str(), ids->user, ids->group) == 0;
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
