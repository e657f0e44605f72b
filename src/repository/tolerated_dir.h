// A directory that cannot be listed must not hide the others.
#pragma once

#include <string>

#include "repository/tolerated.h"
#include "repository/transport.h"

namespace zelvo {

// Raises the failure that is being handled if the whole place no longer answers.
void raiseIfLost(tRepositoryTransport& transport);

// Tells in the log, as an error, that a directory cannot be listed. Raises the failure that is
// being handled if the whole place no longer answers.
void tellUnlistedDir(tRepositoryTransport& transport, const std::string& dir,
                     const std::string& reason);

// Runs work, which looks at a directory of the transport; what it raises is handed to
// tellUnlistedDir.
template <class Work>
void toleratedDir(tRepositoryTransport& transport, const std::string& dir, Work&& work) {
    toleratedInWords(work, "unknown error",
                     [&](const std::string& reason) { tellUnlistedDir(transport, dir, reason); });
}

}  // namespace zelvo
