// The wish that the run should stop, as a signal leaves it. The handler only notes; the lines that
// it owes to the debug log are written later, at the next safe point.
#pragma once

#include <stdexcept>

namespace zelvo {

// Ends a run that was asked to stop. It is no ExTraceable: the guards around single objects must
// let it pass.
class MigrationTerminatedException : public std::runtime_error {
  public:
    MigrationTerminatedException();
};

// Notes one signal and sets the wish to stop. Async-signal-safe.
void noteTerminationSignal() noexcept;

// Sets the wish to stop, without a line in the debug log. Async-signal-safe.
void terminateProgram() noexcept;

// True once the run has been asked to stop.
bool isTerminationRequested() noexcept;

// True once somebody has raised it. What follows is no work of the run any more, but undoes it.
bool isTerminationTold() noexcept;

// The number of signals noted since the last call.
int takeTerminationSignals() noexcept;

}  // namespace zelvo
