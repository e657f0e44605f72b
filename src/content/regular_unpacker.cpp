#include "content/regular_unpacker.h"

#include <sys/stat.h>
#include <unistd.h>

#include "commons/path_steps.h"
#include "commons/session.h"
#include "content/content_errors.h"
#include "content/database_client.h"
#include "content/null_separated.h"
#include "content/unpack_directory.h"
#include "exec/fenced.h"
#include "exec/log_exec_cmd.h"
#include "exec/told_name.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

// The first volume; that it is there shows when it is read. Raises std::out_of_range for a cid
// without files, UnExpectedResult for a name that leaves the session and for what could be read
// without end, such as a device or a pipe.
std::string archiveOf(const Cid& cid) {
    const std::string name = cid.path + "/" + cid.files.at(0);
    std::string archive = theSession->getCidFile(name);
    struct stat status {};
    if (hasParentStep(name) || (stat(archive.c_str(), &status) == 0 && !S_ISREG(status.st_mode))) {
        throw EXC(UnExpectedResult) % (archive + " is no archive of the session");
    }
    return archive;
}

// Runs work whose failures end here. complaint: the last line of the debug log about one. Returns
// whether the work went through.
template <class Work>
bool tolerated(const std::string& complaint, Work&& work) {
    try {
        work();
        return true;
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
    } catch (...) {
        // There is nothing to be told of it.
    }
    theDebugLog->log(complaint);
    return false;
}

}  // namespace

ContentUnpacker::Paths RegularUnpacker::unpackTar(const Cid& cid, const std::string& destination,
                                                  const Paths& /*includes*/) {
    theDebugLog->log("regularUnpacker:unpack '" + cid.str() + "' to '" + destination + "'");
    Paths names;
    tolerated("Can untar", [&] {
        tLogExecCmd tar("tar");
        tar << "-xvf" << archiveOf(cid) << "-C" << destination;
        // Else names that are not ASCII would be told with escapes.
        tar.setEnv("LC_ALL", "C.UTF-8");
        execFenced(tar, destination);
        if (tar.stdout.ends_with('\n')) {
            tar.stdout.pop_back();
        }
        names = parse_nullseparated(tar.stdout);
    });
    return names;
}

void RegularUnpacker::extractPart(const Cid& cid, const std::string& destination) {
    theDebugLog->log("regularUnpacker:extract '" + cid.str() + "' to '" + destination + "'");
    const bool isWhole = tolerated("Cannot copy", [&] {
        tLogExecCmd cp("cp");
        cp << archiveOf(cid) << destination;
        cp.exec();
    });
    if (!isWhole && truncate(destination.c_str(), 0) != 0) {
        theDebugLog->log("There is no " + destination);
    }
}

void RegularUnpacker::unpackDb(const Cid& cid, const DbServerAccess& server,
                               const std::string& database) {
    theDebugLog->log("regularUnpacker:extunpackdb " + cid.str());
    const UnpackDirectory temporary;
    const Paths listings = unpackTar(cid, temporary.path(), Paths());
    const Paths names = listings.empty() ? Paths() : namesOfListing(listings.front());
    loadDatabase(server, database, temporary.path(), names, NoDefaults::kBehindServer);
}

}  // namespace zelvo
