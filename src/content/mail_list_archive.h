// A mail list's archive that has to be unpacked beside those of other lists.
#pragma once

#include <string>

#include "content/content_unpacker.h"

namespace zelvo {

// True for a place in an archive that is the list's directory itself, so that the archive is
// unpacked above it, where the archives of all lists of the server lie. listName: safe as a
// component of a path.
bool isUnpackedBesideOthers(const std::string& listName, const std::string& offset);

// Unpacks such an archive on the side, and moves what it holds of the list, the mailbox directory
// NAME.mbox and the pages NAME, to their places: in those of other lists nothing is written. What
// stood at such a place is gone then. Returns the first name in the archive that is another one,
// empty if there is none. Raises UnExpectedResult for an archive that could not be unpacked in full
// or has nothing of the list, CantMoveContent, and what refuseLinks and ContentUnpacker::untar
// raise; of an archive that is cut off, what there is of the list is in its place all the same.
std::string unpackListArchive(ContentUnpacker& unpacker, const Cid& cid,
                              const std::string& listName, const std::string& offset);

}  // namespace zelvo
