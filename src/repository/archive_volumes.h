// The volumes of an archive as the archiver reads them.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// The absolute paths of local files with what the volumes of one directory hold, which live as long
// as the transport. Raises UrleDecomposingError for more than one directory and TransportError for
// a volume that is not there.
std::vector<std::string> bringVolumes(tRepositoryTransport& transport,
                                      const std::vector<std::string>& volumes);

}  // namespace zelvo
