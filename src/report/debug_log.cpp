#include "report/debug_log.h"

#include <log4cpp/Category.hh>

#include "commons/text_formatter.h"
#include "report/log4cpp_setup.h"
#include "report/termination_lines.h"

namespace zelvo {

DebugLog* theDebugLog = nullptr;

namespace {

// The debug log on a category of log4cpp, whose configuration says where the text goes.
class Log4cppDebugLog : public DebugLog {
  public:
    Log4cppDebugLog(bool verbose, bool debug)
        : verboseMode_(verbose && !debug), debugMode_(debug) {}

    // A log call is a safe point: what a signal handler owes is written first.
    void log(const std::string& text) override {
        writeTerminationLines();
        logger().log(log4cpp::Priority::INFO, text);
    }
    void log(const boost::format& text) override { log(text.str()); }
    void log(const ExTraceable& failure) override { log(formatPlainTextMessage(failure)); }
    bool isVerboseMode() const override { return verboseMode_; }
    bool isDebugMode() const override { return debugMode_; }

  private:
    static log4cpp::Category& logger() { return logCategory(); }

    bool verboseMode_;
    bool debugMode_;
};

}  // namespace

DebugLogLifetimeController::DebugLogLifetimeController(bool verbose, bool debug) {
    initializeLog4Cpp(debug);
    theDebugLog = new Log4cppDebugLog(verbose, debug);
}

DebugLogLifetimeController::~DebugLogLifetimeController() {
    try {
        writeTerminationLines();
    } catch (const std::exception&) {
        // Only a lack of memory comes here; the log ends all the same.
    }
    delete theDebugLog;
    theDebugLog = nullptr;
}

}  // namespace zelvo
