// Which dump a file is of, and which dump is part of another.
#pragma once

#include <string>

#include "repository/dump_search.h"

namespace zelvo {

// Whether a directory above dir holds the info document of a dump with the same label and prefix:
// the one in dir was written with that, and its files are that dump's too.
bool IsPartOfAnotherDump(tRepositoryTransport& transport, const std::string& dir,
                         const std::string& label, const std::string& prefix);

// All files of the dump that the info document describes, and no file of another: the search goes
// by the first word of a name, which dumps of one minute in one directory may share. Raises what
// GetInfoXmlsLabel raises.
DumpFiles FindDumpFiles(tRepositoryTransport& transport, const std::string& infoPath);

}  // namespace zelvo
