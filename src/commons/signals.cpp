#include "commons/signals.h"

#include <csignal>

#include "commons/termination.h"

namespace zelvo {

void kill_handler(int) { noteTerminationSignal(); }

void installKillHandler() {
    struct sigaction handler = {};
    handler.sa_handler = kill_handler;
    handler.sa_flags = SA_RESTART;
    sigemptyset(&handler.sa_mask);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        sigaction(number, &handler, nullptr);
    }
}

}  // namespace zelvo
