// The directories that archives are unpacked into, which customers and earlier archives had their
// hands in.
#pragma once

#include <sys/types.h>

#include <string>

#include "exec/descriptor.h"

namespace zelvo {

// Makes a directory with its missing parents. What exists keeps its owner and mode. path: absolute,
// or relative to the working directory. owner, group: of each directory that is made. mode: theirs,
// or 0 for what the file mask gives. Raises CantCreateDirectory with the first part of the path
// that cannot be a directory, and what openDestination raises.
void create_destdir(const std::string& path, uid_t owner, gid_t group, mode_t mode);

// Opens a directory that content is unpacked into: no link that an archive or a customer can have
// left there is followed. Raises CantStatFile when it is not there or when there is such a link.
Descriptor openDestination(const std::string& path);

}  // namespace zelvo
