// The info document of a packed backup.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// Its name, among what stands at the top of an archive. archive: its name, for messages. Raises
// ImportException unless there is exactly one, and for a name without label.
std::string FindPackedInfo(const std::vector<std::string>& topFiles, const std::string& archive);

}  // namespace zelvo
