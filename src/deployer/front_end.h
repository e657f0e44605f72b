// The run of the utility from its command line to its exit status.
#pragma once

namespace zelvo {

// Does what the command line asks for and returns the exit status: 0 when the action was started,
// however it went (the verdict stands in the result document), 1 when the command line cannot be
// followed. What goes wrong outside the result document leaves as an exception.
int real_main(int argc, char** argv);

}  // namespace zelvo
