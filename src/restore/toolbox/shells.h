// Login shells: which of this server's stands for a shell of the dump.
#pragma once

#include <string>

namespace zelvo {

// Maps the path of a shell onto a shell that this server has: the same path, or else the first one
// of the same file name (case and extension apart), or else the chroot shell. Answers are kept for
// the run. A failure to list the server's shells goes to the debug log and counts as no match.
std::string fixShell(const std::string& shell);

}  // namespace zelvo
