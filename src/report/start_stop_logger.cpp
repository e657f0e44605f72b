#include "report/start_stop_logger.h"

#include <unistd.h>

#include <boost/format.hpp>

#include "lib/shell_quote.h"
#include "report/debug_log.h"

namespace zelvo {

DaemonHandlers parentDaemonHandlers;
DaemonHandlers childDaemonHandlers;

namespace {

std::string commandLine(int argc, char* argv[]) {
    std::string line;
    for (int index = 0; index < argc; ++index) {
        line += (index > 0 ? " " : "") + sh_quote(argv[index]);
    }
    return line;
}

}  // namespace

StartStopLogger::StartStopLogger(const std::string& name, int argc, char* argv[])
    : name_(name), pid_(getpid()) {
    theDebugLog->log(name_ + " started : " + commandLine(argc, argv));
    handler_ = childDaemonHandlers.insert(childDaemonHandlers.end(), [this] { daemonized(); });
}

StartStopLogger::~StartStopLogger() {
    childDaemonHandlers.erase(handler_);
    const std::string outcome = exitCode_ == -1 ? " (exit code is not reported)"
                                                : "Exit code: " + std::to_string(exitCode_);
    try {
        theDebugLog->log(name_ + " finished. " + outcome);
    } catch (const std::exception&) {
        // Nobody is left to be told that the last line is missing.
        return;
    }
}

void StartStopLogger::daemonized() {
    const pid_t pid = getpid();
    theDebugLog->log(boost::format("%1% %2% -> (%3% daemon)") % name_ % pid_ % pid);
    pid_ = pid;
}

}  // namespace zelvo
