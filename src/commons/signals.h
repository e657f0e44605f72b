// The signals by which a run is asked to stop.
#pragma once

namespace zelvo {

// Notes a signal; async-signal-safe. The line that it owes to the debug log is written at the next
// safe point, and the run stops at the next checkProgramTerminated.
void kill_handler(int signalNumber);

// Makes kill_handler the handler of SIGTERM, SIGINT and SIGHUP for the rest of the process. System
// calls under way are resumed.
void installKillHandler();

}  // namespace zelvo
