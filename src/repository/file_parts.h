// The parts that a big file of a repository may have been split into.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// Fills parts with the paths of a file and of its numbered parts, by their numbers. url: the path
// of the file in the transport. Raises RepositoryError for a url without a name and for a file that
// is not there, and what the transport raises.
void GetFileParts(tRepositoryTransport& transport, const std::string& url,
                  std::vector<std::string>& parts);

}  // namespace zelvo
