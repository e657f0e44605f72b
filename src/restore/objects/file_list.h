// Lists of the files of a site application.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace zelvo {

// Writes the list, one name to a line. Whoever owns the stream checks it.
void saveFilelist(const std::vector<std::string>& files, std::ostream& stream);

// Removes the files themselves: links are not followed, directories stay. What cannot be removed is
// told in the debug log, which it needs; what is gone already is not.
void removeFilelist(const std::vector<std::string>& files);

// The same files by their paths from the root on, "." and ".." taken out of them. root: a directory
// without a final slash, as the paths begin with it. Raises UnsafeName for a file that is not below
// it.
std::vector<std::string> reduceFileList(const std::string& root,
                                        const std::vector<std::string>& files);

}  // namespace zelvo
