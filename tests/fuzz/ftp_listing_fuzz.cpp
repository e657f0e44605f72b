// Whatever a server lists: no name leads out of the directory, none is left out or made up where
// the lines are plain names, and no listing takes long.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "repository/ftp_listing.h"
#include "repository/path_guard.h"

namespace {

void requireEntries(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (!zelvo::isEntryName(name)) abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> names;
    zelvo::splitFileNames(text, names);
    requireEntries(names);
    std::vector<std::string> again;
    std::string listing;
    for (const std::string& name : names) listing += name + "\r\n";
    zelvo::splitFileNames(listing, again);
    if (again != names) abort();

    std::vector<zelvo::FtpFileInfo> entries;
    zelvo::SplitFileInfo(text, entries);
    for (const zelvo::FtpFileInfo& entry : entries) {
        if (entry.size < 0 || entry.name.empty() || entry.name.find('/') != std::string::npos)
            abort();
    }
    return 0;
}
