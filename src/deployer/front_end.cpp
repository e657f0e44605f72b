#include "deployer/front_end.h"

#include <cstdlib>
#include <ctime>
#include <iostream>

#include "commons/session.h"
#include "deployer/act.h"
#include "deployer/help_text.h"
#include "deployer/options.h"
#include "lib/read_configuration.h"
#include "report/debug_log.h"
#include "report/start_stop_logger.h"

namespace zelvo {

int real_main(int argc, char** argv) {
    // Without the configuration file every look-up falls back on its default.
    autoprepend();
    srand(static_cast<unsigned>(time(nullptr)));
    config settings;
    parse_options(argc, argv, settings);
    if (action == kNoAction) {
        std::cerr << "Action is not specified. See --help\n";
        return 1;
    }
    if (action == kHelp) {
        std::cout << helpText << std::flush;
        return 0;
    }
    if (settings.sessionPath.empty()) {
        std::cerr << "--session-path is required.\n";
        return 1;
    }
    SessionLifetimeController session(settings.sessionPath);
    DebugLogLifetimeController debugLog(settings.verbose, settings.debug);
    StartStopLogger startStop("deployer", argc, argv);
    act(settings);
    startStop.setExitCode(0);
    return 0;
}

}  // namespace zelvo
