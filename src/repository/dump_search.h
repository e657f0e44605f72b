// The search for the files of a dump, by their names. All paths are relative to the transport, and
// what is found has dir in front.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// What a search for a dump has found.
struct DumpFiles {
    // The info documents and archives.
    std::vector<std::string> files;
    // The discovered directories.
    std::vector<std::string> discovered;
    // The directories that were not searched: links, those that cannot be listed and those that lie
    // too deep. Each may hold more of the dump.
    std::vector<std::string> skipped;
};

// Whether dir holds the info document of a dump. orDiscovered: a discovered directory of it will
// do.
bool HasInfoXml(tRepositoryTransport& transport, const std::string& dir, const std::string& label,
                const std::string& prefix, bool orDiscovered);

// The discovered directories of a dump among those in dir, itself named DISCOVERED.
std::vector<std::string> FindDiscovered(tRepositoryTransport& transport, const std::string& dir,
                                        const std::string& label, const std::string& prefix);

// Adds the files of a dump in dir and in the directories below it. withDiscovered: its discovered
// directories too. A directory that cannot be listed and one that is a link are told in the log and
// passed over.
// Raises RepositoryError for more directories than a repository has.
void FindInfoXmlAndDiscovered(tRepositoryTransport& transport, const std::string& dir,
                              const std::string& label, const std::string& prefix,
                              bool withDiscovered, DumpFiles& found);

}  // namespace zelvo
