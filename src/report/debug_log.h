// The debug log: a stream of text for people, by default "migration.log" in the session.
#pragma once

#include <boost/format.hpp>
#include <string>

#include "commons/exception.h"

namespace zelvo {

// Where the text of the debug log goes.
class DebugLog {
  public:
    virtual ~DebugLog() = default;

    virtual void log(const std::string& text) = 0;
    virtual void log(const boost::format& text) = 0;
    // Writes the plain text form of the failure with all that caused it.
    virtual void log(const ExTraceable& failure) = 0;
    // A failure in words that the work goes on behind.
    virtual void error(const std::string& text) { log(text); }
    virtual bool isVerboseMode() const = 0;
    virtual bool isDebugMode() const = 0;
};

// The debug log of the process: valid between the birth and the death of its controller, null
// otherwise.
extern DebugLog* theDebugLog;

// Owns the process's debug log.
class DebugLogLifetimeController {
  public:
    // Configures log4cpp on the first use in a process and sets theDebugLog. verbose counts only
    // without debug. Raises log4cpp::ConfigureFailure (a standard exception) for a configuration
    // file that is missing or broken.
    DebugLogLifetimeController(bool verbose, bool debug);
    ~DebugLogLifetimeController();
    DebugLogLifetimeController(const DebugLogLifetimeController&) = delete;
    DebugLogLifetimeController& operator=(const DebugLogLifetimeController&) = delete;
};

}  // namespace zelvo
