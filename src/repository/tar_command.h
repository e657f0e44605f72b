// How the archiver is given the volumes of an archive.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "exec/log_exec_cmd.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

// A command that reads an archive.
struct ArchiverRun {
    tLogExecCmd command;
    // What the command reads its program from, if it does; has to live until the command has ended.
    std::optional<TempFileGuard> script;
};

// Completes a tar command by what makes it read these files, which are one archive together, and
// returns the command to run: tar itself for one volume, and one that pipes them into tar for
// several. volumes: local files by absolute paths, as GNU tar takes "a:b" for a file of another
// host. Raises ArchiverError for none, RepositoryError for a first one that is no archive,
// CantCreateTempFile, StreamError and OutputStreamException.
ArchiverRun SendFilesToTar(tLogExecCmd& tar, const std::vector<std::string>& volumes);

// Makes a temporary file with a text in it. Raises CantCreateTempFile, StreamError and
// OutputStreamException.
TempFileGuard makeTempFile(const std::string& text);

}  // namespace zelvo
