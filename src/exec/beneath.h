// Work on what an archive left in a directory. The names and the links in an archive are its
// author's, so each path is resolved by the kernel with the directory as its bound.
#pragma once

#include <sys/types.h>
#include <ctime>
#include <string>

#include "exec/descriptor.h"

namespace zelvo {

// Opens a path for reference only (Linux openat2, O_PATH); a link at its end is opened itself.
// path: begins with the directory's. Returns a closed descriptor when it does not, when nothing is
// there, or when a link or ".." on the way leads out of the directory.
Descriptor openBeneath(const std::string& directory, const std::string& path);

// Opens a directory for reading (POSIX openat) through no link at all but those in the name of the
// first. directory: followed as usual. path: begins with the directory's. Returns a closed
// descriptor with errno set when something on the way is no directory.
Descriptor openDirectoryBeneath(const std::string& directory, const std::string& path);

// The type (S_IFREG and its kind, POSIX) of what openBeneath reaches, 0 for nothing.
mode_t typeBeneath(const std::string& directory, const std::string& path);

// As lchown and chmod (POSIX) on what openBeneath reaches; a link is given an owner but no mode.
// Nothing tells of a failure. owner, group: -1 cast to the type leaves it.
void lchownBeneath(const std::string& directory, const std::string& path, uid_t owner, gid_t group);
void chmodBeneath(const std::string& directory, const std::string& path, mode_t mode);

// Raises UnExpectedResult when a path, or anything below it, is neither a regular file nor a
// directory (POSIX): a program that is let loose on it would follow a link to the files of others.
// What is not there is fine; what cannot be looked through is not.
void refuseLinks(const std::string& path);

// The same, but a link below the directory that leads to a file or a directory below it is fine.
void refuseLinksOut(const std::string& directory);

// Removes below a directory what is neither a regular file nor a directory, as far as it came there
// since a time: what stood there stays. Returns the path of the first one, empty for none. since:
// by the clock of the file system (CLOCK_REALTIME_COARSE of POSIX's clock_gettime on Linux).
std::string removeIrregular(const std::string& directory, const timespec& since);

}  // namespace zelvo
