#include "report/termination_lines.h"

#include "commons/termination.h"
#include "report/debug_log.h"

namespace zelvo {

void writeTerminationLines() {
    if (theDebugLog == nullptr) {
        return;
    }
    // The debug log comes back here with every line. What is taken is no longer owed, so that call
    // finds only signals that have arrived since.
    for (int owed = takeTerminationSignals(); owed > 0; --owed) {
        theDebugLog->log(std::string("Deployer | Terminated"));
    }
}

void checkProgramTerminated() {
    writeTerminationLines();
    if (isTerminationRequested()) {
        throw MigrationTerminatedException();
    }
}

}  // namespace zelvo
