// Archives of mail lists that have to be unpacked beside those of other lists.
#pragma once

#include <set>
#include <string>

#include "content/content_unpacker.h"

namespace zelvo {

using ListNames = std::set<std::string>;

// True for a place in an archive that is the list's directory itself, so that the archive is
// unpacked above it, where the archives of all lists of the server lie. listName: safe as a
// component of a path.
bool isUnpackedBesideOthers(const std::string& listName, const std::string& offset);

// Unpacks such an archive on the side, and moves what it holds of the list, the mailbox directory
// NAME.mbox and the pages NAME, to their places: in those of other lists nothing is written. What
// stood at such a place is gone then. Returns the first name in the archive that is another one,
// empty if there is none. Raises UnExpectedResult for an archive that could not be unpacked in full
// or has nothing of the list or a link out of it, CantMoveContent, and what ContentUnpacker::untar
// raises; of an archive that is cut off, what there is of the list is in its place all the same.
std::string unpackListArchive(ContentUnpacker& unpacker, const Cid& cid,
                              const std::string& listName, const std::string& offset);

// The same for an archive of several lists. wanted: those that are moved, safe as components of a
// path; the failure of one is told and costs that one. known: those that the archive may hold
// besides, which are passed over; with the wanted ones. Raises UnExpectedResult for an archive that
// could not be unpacked in full, and what ContentUnpacker::untar raises.
std::string unpackListArchives(ContentUnpacker& unpacker, const Cid& cid,
                               const ContentUnpacker::Paths& includes, const ListNames& wanted,
                               const ListNames& known);

}  // namespace zelvo
