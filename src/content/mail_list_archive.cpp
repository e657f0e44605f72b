#include "content/mail_list_archive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <set>
#include <tuple>
#include <vector>

#include "content/account_ids.h"
#include "content/accounts.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/destination.h"
#include "content/unpack_directory.h"
#include "exec/beneath.h"
#include "exec/destination_directory.h"
#include "report/guard.h"

namespace zelvo {

namespace {

// An archive may hold the files of a directory without the directory.
void makeAs(const std::string& path, const std::string& model) {
    struct stat status {};
    if (lstat(model.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        create_destdir(path, status.st_uid, status.st_gid, status.st_mode & 07777);
    }
}

bool knowsNoExchange(int error) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

// What stands in the place goes first, and comes back if the other one cannot follow.
void replace(const std::string& from, const std::string& to) {
    const UnpackDirectory aside(getListArchivesDir());
    const std::string old = aside.path() + "/old";
    const bool isAway = rename(to.c_str(), old.c_str()) == 0;
    if ((isAway || errno == ENOENT) && rename(from.c_str(), to.c_str()) == 0) {
        return;
    }
    const int error = errno;
    if (isAway) {
        std::ignore = rename(old.c_str(), to.c_str());
    }
    throw EXC(CantMoveContent) % from % to % strerror(error);
}

// Both are on one disk. What stands in the place comes to the other one, so that a link there is
// not followed.
void move(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) != 0) {
        if (knowsNoExchange(errno)) {
            replace(from, to);
        } else if (errno != ENOENT || rename(from.c_str(), to.c_str()) != 0) {
            throw EXC(CantMoveContent) % from % to % strerror(errno);
        }
    }
}

// The directories of a list's archive: the mailbox, and the pages unless another list's mailbox has
// their name.
std::vector<std::string> directoriesOf(const std::string& listName) {
    std::vector<std::string> directories = {listName + ".mbox"};
    if (!listName.ends_with(".mbox")) {
        directories.push_back(listName);
    }
    return directories;
}

void makeArchivesDir() {
    create_destdir(getListArchivesDir(), userId(accounts::kMailList), groupId(accounts::kMailList),
                   0);
}

void makeDirectoriesOf(const std::string& listName, const std::string& side) {
    const std::string place = side + "/";
    for (const std::string& directory : directoriesOf(listName)) {
        makeAs(place + directory, getListArchivesDir() + directory);
    }
}

// Returns whether there was something to be moved.
bool moveDirectory(const std::string& name, const std::string& side) {
    const std::string path = side + "/" + name;
    const mode_t type = typeBeneath(side, path);
    if (type == 0 || rmdir(path.c_str()) == 0) {
        return false;
    }
    if (type != S_IFDIR) {
        throw EXC(UnExpectedResult) % ("the archive's " + name + " is no directory");
    }
    // It names a path that is gone afterwards, which is for the log.
    if (!debugLogged([&] { refuseLinksOut(path); })) {
        throw EXC(UnExpectedResult) %
            ("the archive's " + name + " has a link that leads out of it");
    }
    move(path, getListArchivesDir() + name);
    return true;
}

bool moveList(const std::string& listName, const std::string& side) {
    bool hasMoved = false;
    for (const std::string& directory : directoriesOf(listName)) {
        hasMoved = moveDirectory(directory, side) || hasMoved;
    }
    return hasMoved;
}

// The first name in a directory that is none of these lists'.
std::string otherThan(const ListNames& lists, const std::string& side) {
    std::set<std::string> known;
    for (const std::string& list : lists) {
        const std::vector<std::string> directories = directoriesOf(list);
        known.insert(directories.begin(), directories.end());
    }
    std::error_code error;
    for (std::filesystem::directory_iterator entry(side, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename();
        if (!known.contains(name)) {
            return name;
        }
    }
    return "";
}

}  // namespace

bool isUnpackedBesideOthers(const std::string& listName, const std::string& offset) {
    const std::string directory = getListMboxDir(listName);
    return aboveOffset(directory, offset) != directory;
}

std::string unpackListArchive(ContentUnpacker& unpacker, const Cid& cid,
                              const std::string& listName, const std::string& offset) {
    makeArchivesDir();
    const UnpackDirectory side(getListArchivesDir());
    makeDirectoriesOf(listName, side.path());
    const ContentUnpacker::Paths paths =
        unpacker.untar(cid, side.path(), offset, accounts::kMailList, accounts::kMailList, 0);
    std::string other = otherThan({listName}, side.path());
    const bool hasMoved = moveList(listName, side.path());
    requireUnpacked(paths);
    if (!hasMoved) {
        throw EXC(UnExpectedResult) % ("the archive holds nothing of the mail list " + listName);
    }
    return other;
}

std::string unpackListArchives(ContentUnpacker& unpacker, const Cid& cid,
                               const ContentUnpacker::Paths& includes, const ListNames& wanted,
                               const ListNames& known) {
    makeArchivesDir();
    const UnpackDirectory side(getListArchivesDir());
    for (const std::string& list : wanted) {
        makeDirectoriesOf(list, side.path());
    }
    const ContentUnpacker::Paths paths = unpacker.extractDomainMailList(cid, side.path(), includes);
    std::string other = otherThan(known, side.path());
    for (const std::string& list : wanted) {
        guarded([&] { moveList(list, side.path()); });
    }
    requireUnpacked(paths);
    return other;
}

}  // namespace zelvo
