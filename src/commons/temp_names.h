// New temporary files and directories that nobody else can have made: mkstemp(3), mkdtemp(3).
#pragma once

#include <string>

namespace zelvo {

// Makes an empty file (mode 0600) and returns its name: the directory, "/" unless it ends in one,
// the prefix and six characters. directory: if empty, DUMP_TMP_D of the configuration file or else
// the temporary directory of the migration tools. The caller removes the file. Raises
// CantCreateTempFile.
std::string RMK_getTempFileName(const std::string& directory, const std::string& prefix);

// The same for a directory (mode 0700). Raises CantCreateTempDir.
std::string RMK_makeTempFileDirectory(const std::string& directory, const std::string& prefix);

}  // namespace zelvo
