// Making a directory with its missing parents.
#pragma once

#include <sys/types.h>

#include <boost/filesystem/path.hpp>
#include <string>

namespace zelvo {

// Makes the directory and each missing parent, all with this owner, group and mode (as mkdir(2)
// takes it, less the umask). What exists is left alone, whatever it is. Nothing tells of a failure:
// the caller looks whether the directory is there. The first two raise InvalidHandle when there is
// no memory for their copy of the path.
void make_dir(const std::string& path, uid_t owner, gid_t group, mode_t mode);
void make_dir(const boost::filesystem::path& path, uid_t owner, gid_t group, mode_t mode);
// path is cut at its slashes meanwhile and is whole again at the end.
void make_dir(char* path, uid_t owner, gid_t group, mode_t mode);

}  // namespace zelvo
