#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "commons/text_formatter.h"
#include "deployer/front_end.h"

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

int main(int argc, char** argv) {
    occupyStandardStreams();
    clearSignalMask();
    // A reader of our output that goes away costs its lines and not the restore.
    signal(SIGPIPE, SIG_IGN);
    try {
        return zelvo::real_main(argc, argv);
    } catch (const zelvo::ExTraceable& failure) {
        std::cerr << "Uncaught ExTraceableException: " << zelvo::formatPlainTextMessage(failure)
                  << std::endl;
    } catch (const std::exception& failure) {
        std::cerr << "Uncaught std::exception: " << failure.what() << std::endl;
    } catch (...) {
        std::cerr << "Uncaught unknown exception\n";
    }
    return 1;
}
