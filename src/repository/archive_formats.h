// What a file is, by its first bytes.
#pragma once

#include <fstream>
#include <string>

namespace zelvo {

// The name of the archiver.
inline constexpr const char* TAR_UTIL = "tar";

// Whether an open binary file is a ZIP archive, a gzip file (RFC 1952), a tar archive (POSIX ustar
// or GNU). Each reads from the start, whatever the state of the stream.
bool HasZipFormat(std::ifstream& file);
bool HasGzipFormat(std::ifstream& file);
bool HasTarFormat(std::ifstream& file);

// True for a local file in gzip format, false for a tar archive. Raises RepositoryError for any
// other, one that cannot be read among them.
bool IsGzipped(const std::string& path);

}  // namespace zelvo
