// Directory listings of FTP servers (RFC 959, LIST and NLST), whose form each server chooses.
#pragma once

#include <string>
#include <vector>

#include "repository/creation_date.h"

namespace zelvo {

// A line of a listing. Servers tell a date without zone and often without year: none is taken from
// it.
struct FtpFileInfo : CreationDateMixin {
    // Without the path.
    std::string name;
    // In bytes.
    long size = 0;
    bool isDirectory = false;
};

// Lines that are longer are no listing.
inline constexpr std::size_t kMaxListingLine = 4096;
// A server with more is made to take the memory.
inline constexpr std::size_t kMaxListingLines = 2000000;

// Each reads one line and returns whether it has that form: of "ls -l" and of the "dir" of DOS. Of
// a name with blanks the first leaves what stands behind the last blank.
bool InitFromUnixLs(const std::string& line, FtpFileInfo& info);
bool InitFromWinDir(const std::string& line, FtpFileInfo& info);

// Appends the entries of a listing; a line that has neither form is logged and skipped, and so are
// "." and "..". Raises TransportError for more than kMaxListingLines lines, as splitFileNames does.
void SplitFileInfo(const std::string& text, std::vector<FtpFileInfo>& entries);

// Whether a listing has no lines but those that a directory without entries has.
bool isEmptyListing(const std::string& text);

// Appends the names of a listing of names alone: without a path in front, without "." and "..".
void splitFileNames(const std::string& text, std::vector<std::string>& names);

}  // namespace zelvo
