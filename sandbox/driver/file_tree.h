// Files as lines, for archives that a test makes and for what must stand afterwards:
//
//   dir/ qrdadm:qrdcln 750
//   dir/index.html root:root 644 'Hello\n'
//   link root:root -> dir
//
// Words are quoted as in the journal. A path that ends in a slash is a directory.
#pragma once

#include <string>

class Sandbox;

// Makes an archive of the files with GNU tar, in their order, compressed with gzip if its name ends
// in "gz". They may lack owners, who are root then, and modes: 755 and 644. Missing content is
// none.
void makeArchive(const std::string& path, const std::string& files);

// All that stands under a directory of the sandbox, itself ("./") included, sorted by path; a mark
// as "(p)" stands for the content of what is neither file, link nor directory. Empty if there is no
// such directory.
std::string treeOf(Sandbox& box, const std::string& directory);
