// The types of the objects that a repository holds dumps of: "server", "reseller", "client",
// "domain", from the highest to the lowest.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The directory that holds the trees of the objects of a type; empty for the server. Raises
// RepositoryException for what is no type.
std::string GetObjectTypeGroupDir(const std::string& type);

// The directories in which dumps of a type can lie below their owner. Raises RepositoryException.
std::vector<std::string> GetObjectTypeSearchDirs(const std::string& type);

// Whether both are types and the first is not above the second.
bool HasMinorType(const std::string& type, const std::string& other);

// Raises ImportException for a dump whose type is above what is expected, or none.
void CheckObjectType(const std::string& type, const std::string& expected);

}  // namespace zelvo
