// What an archive holds, before anything of it is unpacked.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The members of an archive, in its order, directories with "/" at their end. volumes: as
// ExtractArchive takes them. Raises ImportException for a member that is neither file nor directory
// (a link could lead what comes behind it to another place) and for a name that leads out of the
// destination, that a listing cannot show or that has a "." among its components: no rule on names
// would know it; ArchiverError.
std::vector<std::string> ListPlainArchive(const std::vector<std::string>& volumes);

}  // namespace zelvo
