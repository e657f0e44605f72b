#include "content/mail_list_archive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <tuple>

#include "content/account_ids.h"
#include "content/accounts.h"
#include "content/beneath.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/destination.h"
#include "content/unpack_directory.h"

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

// Returns whether there was something to be moved.
bool moveDirectory(const std::string& name, const std::string& from, const std::string& to) {
    const std::string path = from + "/" + name;
    const mode_t type = typeBeneath(from, path);
    if (type == 0 || rmdir(path.c_str()) == 0) {
        return false;
    }
    if (type != S_IFDIR) {
        throw EXC(UnExpectedResult) % ("the archive's " + name + " is no directory");
    }
    refuseLinks(path);
    move(path, to + name);
    return true;
}

std::string otherThan(const std::string& one, const std::string& two,
                      const std::string& directory) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name != one && name != two) {
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
    const std::string all = getListArchivesDir();
    const std::string mailbox = listName + ".mbox";
    // Such a name is that of another list's mailbox.
    const std::string pages = listName.ends_with(".mbox") ? mailbox : listName;
    create_destdir(all, userId(accounts::kMailList), groupId(accounts::kMailList), 0);
    const UnpackDirectory side(all);
    makeAs(side.path() + "/" + mailbox, getListMboxDir(listName));
    const ContentUnpacker::Paths paths =
        unpacker.untar(cid, side.path(), offset, accounts::kMailList, accounts::kMailList, 0);
    std::string other = otherThan(pages, mailbox, side.path());
    const bool hasMailbox = moveDirectory(mailbox, side.path(), all);
    const bool hasPages = pages != mailbox && moveDirectory(pages, side.path(), all);
    requireUnpacked(paths);
    if (!hasMailbox && !hasPages) {
        throw EXC(UnExpectedResult) % ("the archive holds nothing of the mail list " + listName);
    }
    return other;
}

}  // namespace zelvo
