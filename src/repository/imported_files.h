// Whether the files of an imported dump are those of one dump.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// Checks that each file is named as one of the dump that infoPath is the info document of. files:
// relative to its directory; those that end in "/" are directories and are passed over. Appends to
// items the discovered items with this name. Raises RepositoryException.
void CheckImportedFiles(const std::string& infoPath, const std::vector<std::string>& files,
                        const std::string& item, std::vector<std::string>& items);

}  // namespace zelvo
