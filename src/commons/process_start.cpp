#include "commons/process_start.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace zelvo {

namespace {

// A mask inherited from the caller must not hold back the signals that end a run.
void clearSignalMask() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// A caller that closed a standard stream must not get a status file or a pipe in its place, with
// messages written into it.
void occupyStandardStreams() {
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
        if (fcntl(fd, F_GETFD) == -1) {
            open("/dev/null", O_RDWR);
        }
    }
}

}  // namespace

void startProcess() {
    occupyStandardStreams();
    clearSignalMask();
    signal(SIGPIPE, SIG_IGN);
}

}  // namespace zelvo
