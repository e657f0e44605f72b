// Paths and names at the borders of a repository. They come from info documents, from archives and
// from the listings of servers, and become paths of root's own and commands of FTP.
#pragma once

#include <string>

namespace zelvo {

// The path without "/" and "\" at its start. Raises TransportException for one that leads out of
// the place that it is relative to (a component "..") or that no command can hold (NUL, CR, LF).
std::string relativePath(const std::string& path);

// The path in the one form that a search gives it: as relativePath leaves it, without components
// that are empty or ".", also at its end. Raises what that raises.
std::string normalPath(const std::string& path);

// Returns the path if it is not the place itself, which no operation may remove. Raises
// TransportException.
const std::string& requireInside(const std::string& path);
// The same for what an operation removes, without "/" and "." at its end: behind a link they would
// lead to where it points.
std::string removablePath(const std::string& path);

// The path of an entry of a directory; dir may be empty for the place itself.
std::string joinPath(const std::string& dir, const std::string& name);

// The file name at the end of a path, and what stands in front of it, without the "/" between.
std::string fileNameOf(const std::string& path);
std::string parentOf(const std::string& path);

// Whether a text holds a byte that is no part of a name: it could end one command and begin
// another.
bool hasControlCharacter(const std::string& text);

// Whether a name of a listing can be the name of an entry: neither empty nor "." or "..", without
// "/" and control characters.
bool isEntryName(const std::string& name);

// Returns the value if it can be one component of a path. Raises RepositoryException. what: whose
// it is, for the message.
const std::string& requireName(const std::string& value, const std::string& what);

}  // namespace zelvo
