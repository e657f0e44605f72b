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

}  // namespace

int main(int argc, char** argv) {
    clearSignalMask();
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
