// The pages that the panel puts into a new site.
#pragma once

#include <string>

namespace zelvo {

// Removes the start pages from both document roots below a directory, so that none of them stands
// in front of the content that comes. directory: of a virtual host or of a subdomain, absolute.
// Raises UnsafeName for a path that leads elsewhere, and ExecCmd::Failed, also when a document root
// is missing.
void removeStartPages(const std::string& directory);

}  // namespace zelvo
