// The lines of the debug log that mark the start and the end of a program.
#pragma once

#include <sys/types.h>

#include <boost/function.hpp>
#include <list>
#include <string>

namespace zelvo {

using DaemonHandlers = std::list<boost::function<void()>>;

// What a process must do when it turns into a daemon, in the one that ends and in the one that goes
// on. Programs that stay in the foreground run neither.
extern DaemonHandlers parentDaemonHandlers;
extern DaemonHandlers childDaemonHandlers;

// Writes one line at its birth and one at its death. Needs theDebugLog.
class StartStopLogger {
  public:
    // Writes the program's name and its arguments, argv[0] included, quoted for a shell. They are
    // shown as they are, passwords too.
    StartStopLogger(const std::string& name, int argc, char* argv[]);
    ~StartStopLogger();
    StartStopLogger(const StartStopLogger&) = delete;
    StartStopLogger& operator=(const StartStopLogger&) = delete;

    // The status that the last line reports. A program that an exception ends does not come here,
    // and the line says that there is none.
    void setExitCode(int exitCode) { exitCode_ = exitCode; }

    // Notes in the log that the process goes on under another process id.
    void daemonized();

  private:
    std::string name_;
    pid_t pid_;
    int exitCode_ = -1;
    DaemonHandlers::iterator handler_;
};

}  // namespace zelvo
