// What a document root that was made with the web server's authoring extensions needs on a new
// server.
#pragma once

#include <string>

namespace zelvo {

// Whether there is anything to mend in a file of this name. file: the full path.
bool isMendedByName(const std::string& file);

// Mends one unpacked file: paths of the old server in access files become those of this one, and
// extension directories are the web server's. domain: the domain's name. destination: the document
// root. file: the file's full path, resolved within its root by the caller. Nothing is raised; what
// sed cannot do is told by messlog2.
void apply_hosting_cid_with_fp(const std::string& domain, const std::string& destination,
                               const std::string& file);

}  // namespace zelvo
