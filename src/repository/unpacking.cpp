// The half of tRepository that unpacks archives.
#include <boost/algorithm/string/join.hpp>
#include <boost/filesystem/operations.hpp>

#include "commons/path_steps.h"
#include "repository/archive_extraction.h"
#include "repository/archive_volumes.h"
#include "repository/new_entries.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/safe_create_dir.h"

namespace zelvo {

namespace {

namespace fs = boost::filesystem;

// Where what goes to a directory of a transport is made.
std::string localPlace(tRepositoryTransport& transport, const std::string& dest) {
    const std::string receiving = transport.GetReceivingDir();
    const std::string place =
        receiving.empty() ? transport.GetFullPath(dest) : joinPath(receiving, relativePath(dest));
    const std::string directory = place.substr(0, place.find_last_not_of('/') + 1);
    return directory.empty() ? "/" : fs::absolute(directory).string();
}

// What was made to be sent goes on every way out: the next operation would send it again.
class ReceivingGuard {
  public:
    explicit ReceivingGuard(tRepositoryTransport& transport) : transport_(transport) {}
    ~ReceivingGuard() { transport_.ClearReceivingDir(); }
    ReceivingGuard(const ReceivingGuard&) = delete;
    ReceivingGuard& operator=(const ReceivingGuard&) = delete;

  private:
    tRepositoryTransport& transport_;
};

}  // namespace

Paths tRepository::Unpack(const Paths& volumes, const std::string& dest, const Paths& includes,
                          MemberAttributes attributes) {
    if (dest.empty()) {
        // It would be taken for the root of the file system.
        throw EXC(TransportError) % "no directory to unpack to";
    }
    // A "\" at the end would be taken for a "/".
    tRepository target(dest.ends_with('\\') ? dest + "/" : dest, "", "", "", false);
    return UnpackToRepo(volumes, target, "", includes, attributes);
}

Paths tRepository::UnpackToRepo(const Paths& volumes, tRepository& target, const std::string& dest,
                                const Paths& includes, MemberAttributes attributes) {
    if (target.transaction_->IsStarted()) {
        target.noteUnpacking(dest, ListArchive(bringVolumes(transport(), volumes), includes));
    }
    return unpackNoted(volumes, target, dest, includes, attributes);
}

// Before the first byte: an archive that cannot be unpacked to its end leaves files as well.
void tRepository::noteUnpacking(const std::string& dest, const Paths& members) {
    NewEntries entries(*transport_);
    entries.note(joinPath(dest, ""));
    for (const std::string& member : members) {
        // The archiver leaves others out or gives them another place.
        if (!hasParentStep(member) && !hasControlCharacter(member)) {
            entries.note(joinPath(dest, member));
        }
    }
    AddFilesToTransaction("", entries.made());
}

Paths tRepository::unpackNoted(const Paths& volumes, tRepository& target, const std::string& dest,
                               const Paths& includes, MemberAttributes attributes) {
    log("Unpack from " + boost::join(volumes, ", ") + " to " + target.place() + "/" + dest);
    const Paths files = bringVolumes(transport(), volumes);
    const std::string directory = localPlace(target.transport(), dest);
    const ReceivingGuard receiving(target.transport());
    if (!SafeCreateDir(directory)) {
        throw EXC(TransportError) % (dest + " unable to create directory ");
    }
    Paths unpacked;
    ExtractArchive(files, directory, includes, Paths(), unpacked, attributes);
    target.transport().ReceiveDir(dest);
    return unpacked;
}

}  // namespace zelvo
