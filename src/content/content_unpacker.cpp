#include "content/content_unpacker.h"

#include <algorithm>
#include <boost/format.hpp>

#include "commons/path_steps.h"
#include "content/account_ids.h"
#include "content/content_errors.h"
#include "content/destination.h"
#include "content/file_status_preserver.h"
#include "content/front_page.h"
#include "exec/beneath.h"
#include "exec/destination_directory.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

// The full path of what the archive lists with a leading ".", "/" or neither. Nothing is unpacked
// above the destination, so a path that climbs would lead its users to what was never unpacked.
std::string fullPath(const std::string& destination, const std::string& name) {
    std::size_t start = name.at(0) == '.' ? 1 : 0;
    if (start < name.size() && name[start] == '/') {
        ++start;
    }
    const std::string rest = name.substr(start);
    if (hasParentStep(rest)) {
        throw EXC(UnExpectedResult) % ("the archive has a name that leads out of " + destination);
    }
    return destination + "/" + rest;
}

void requireSafe(const ContentUnpacker::Paths& includes) {
    if (!std::all_of(includes.begin(), includes.end(), isSafeOffset)) {
        throw EXC(UnExpectedResult) % "a part's place in an archive is no plain path";
    }
}

}  // namespace

ContentUnpacker::Paths ContentUnpacker::untar(const Cid& cid, const std::string& destination,
                                              const Paths& includes, const std::string& user,
                                              const std::string& group, mode_t mode) {
    theDebugLog->log("Unpack file to '" + destination + "' User: '" + user + "', group '" + group +
                     "'");
    requireSafe(includes);
    Paths distinct = includes;
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    const uid_t uid = userId(user);
    const gid_t gid = groupId(group);
    create_destdir(destination, uid, gid, mode);
    const FileStatusPreserver preserver(destination);
    Paths paths = unpackTar(cid, destination, distinct);
    for (std::string& path : paths) {
        path = fullPath(destination, path);
    }
    return paths;
}

ContentUnpacker::Paths ContentUnpacker::untar(const Cid& cid, const std::string& destination,
                                              const std::string& user, const std::string& group,
                                              mode_t mode) {
    return untar(cid, destination, Paths(), user, group, mode);
}

ContentUnpacker::Paths ContentUnpacker::untar(const Cid& cid, const std::string& destination,
                                              const std::string& offset, const std::string& user,
                                              const std::string& group, mode_t mode) {
    if (offset.empty()) {
        return untar(cid, destination, user, group, mode);
    }
    const std::string above = aboveOffset(destination, offset);
    if (above != destination) {
        theDebugLog->log("Change destination path to '" + above + "' using offset '" + offset +
                         "'");
    }
    return untar(cid, above, Paths{offset}, user, group, mode);
}

ContentUnpacker::Paths ContentUnpacker::unpack_hosting_cid(const Cid& cid,
                                                           const std::string& destination,
                                                           const std::string& offset,
                                                           const std::string& user,
                                                           const std::string& group, mode_t mode) {
    return untar(cid, destination, offset, user, group, mode);
}

ContentUnpacker::Paths ContentUnpacker::unpack_hosting_cid_with_fp(
    const Cid& cid, const std::string& domain, const std::string& destination,
    const std::string& offset, const std::string& user, const std::string& group, mode_t mode) {
    Paths paths = unpack_hosting_cid(cid, destination, offset, user, group, mode);
    const std::string unpackedIn = aboveOffset(destination, offset);
    for (const std::string& path : paths) {
        if (!isMendedByName(path)) {
            // Nearly all are such, and asking for the place of each costs a tenth of a restore.
            continue;
        }
        if (openBeneath(unpackedIn, path).isOpen()) {
            apply_hosting_cid_with_fp(domain, destination, path);
        } else {
            // The unpacker has told the names.
            theDebugLog->log("Nothing is rewritten of what is not one path below '" + unpackedIn +
                             "'");
        }
    }
    return paths;
}

}  // namespace zelvo
