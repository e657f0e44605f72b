// What a program of ours does before anything else, whoever started it.
#pragma once

namespace zelvo {

// Opens the standard streams that the caller closed, so that no file of ours gets their numbers,
// unblocks all signals, and ignores SIGPIPE: a reader that goes away costs its lines and not the
// work.
void startProcess();

}  // namespace zelvo
