// The parts of a packed backup.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// The files of an archive in the order of their numbers, the archive itself first. path: of the
// archive in the transport; a directory is never one. Raises RepositoryError for a path without a
// name and for an archive that is not there, and the failures of the transport.
std::vector<std::string> GetFileParts(tRepositoryTransport& transport, const std::string& path);

// Whether a file has the name of a part of an archive that lies beside it. Raises the failures of
// the transport.
bool IsPartOfArchive(tRepositoryTransport& transport, const std::string& path);

}  // namespace zelvo
