// The one action of a run, inside the frame that turns its failure into the result document.
#pragma once

#include "deployer/options.h"

namespace zelvo {

// Runs the chosen action. A failure of the action ends up in the result document; a failure to
// write that document, and whatever is neither an ExTraceable nor a request to stop,
// leaves.
void act(const config& settings);

}  // namespace zelvo
