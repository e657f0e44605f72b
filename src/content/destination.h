// The directories that content is unpacked into.
#pragma once

#include <sys/types.h>

#include <string>

namespace zelvo {

// Makes a directory with its missing parents. What exists keeps its owner and mode. path: absolute,
// or relative to the working directory. owner, group: of each directory that is made. mode: theirs,
// or 0 for what the file mask gives. Raises CantCreateDirectory with the first part of the path
// that cannot be a directory.
void create_destdir(const std::string& path, uid_t owner, gid_t group, mode_t mode);

// The destination without the offset that it ends in, or as it is: an archive holds the offset as
// a path inside, so it has to be unpacked above it. offset: may be empty.
std::string aboveOffset(const std::string& destination, const std::string& offset);

// True for a place inside an archive that can stand in a list of members: GNU tar takes a line that
// begins with "-" for an option, and a line feed for the end of a member's name. Empty is safe.
bool isSafeOffset(const std::string& offset);

// The directory of a domain. domain: its name in UTF-8. Raises IDNConversationError for a name that
// has no ASCII form, UnsafeName for one whose ASCII form is no single directory.
std::string getVhostDir(const std::string& domain);

// The directory of a subdomain. vhostDir: that of its domain. name: the part before the domain, in
// UTF-8. Raises the same.
std::string getSubdomainDir(const std::string& vhostDir, const std::string& name);

}  // namespace zelvo
