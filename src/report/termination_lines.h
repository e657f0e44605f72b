// The safe points at which a run sees that it was asked to stop.
#pragma once

namespace zelvo {

// Writes to the debug log the line of each termination signal that has none yet: the handler can
// only note a signal. Without a debug log the lines stay owed.
void writeTerminationLines();

// Writes the lines that are owed, then throws MigrationTerminatedException if the run was asked to
// stop. Stands at the head of the work on an object, so that a command is never cut short.
void checkProgramTerminated();

}  // namespace zelvo
