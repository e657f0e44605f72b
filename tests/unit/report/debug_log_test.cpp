// The debug log and what writes to it by itself.
#include "report/debug_log.h"

#include <sys/stat.h>
#include <unistd.h>

#include "commons/termination.h"
#include "report/log4cpp_setup.h"
#include "run.h"

namespace zelvo {
namespace {

// log4cpp is configured once in a process, so a child writes. It ends without the end of the test
// program, which would take the panel along.
void writeLog(bool debug) {
    umask(022);
    DebugLogLifetimeController controller(true, debug);
    theDebugLog->log("100% %s " + std::to_string(theDebugLog->isVerboseMode()));
    theDebugLog->log(test::failure("x"));
    deployerCategory() << log4cpp::Priority::DEBUG << "extra";
    noteTerminationSignal();
    controller.~DebugLogLifetimeController();
    fflush(nullptr);
    _exit(umask(022) == 022 && theDebugLog == nullptr ? 0 : 1);
}

// Catches a reference that is not filled or that the characters of the path break, an appender that
// stays or goes in the wrong mode, and passwords in a file that others can read.
TEST(DebugLog, WritesToTheLogFileOfTheSession) {
    test::panelBox.dir.write("product/RMK/log4cpp.properties",
                             "rootCategory=DEBUG, A1, A2\nappender.A1=FileAppender\n"
                             "appender.A1.fileName=${LOG_FILE_NAME}\nappender.A1.threshold=INFO\n"
                             "appender.A1.layout=PatternLayout\n"
                             "appender.A1.layout.ConversionPattern=%c %p %m%n\n"
                             "appender.A2=FileAppender\nappender.A2.fileName=${LOG_FILE_NAME}."
                             "extra\nappender.A2.layout=SimpleLayout\n");
    for (const bool debug : {false, true}) {
        const test::Session session;
        EXPECT_EXIT(writeLog(debug), testing::ExitedWithCode(0), "");
        EXPECT_EQ(session.file("migration.log"),
                  std::string("p.log INFO 100% %s ") + (debug ? "0" : "1") +
                      "\np.log INFO NotSupportedOperation: The operation is not supported: x "
                      "[./f.cpp:7]\np.log INFO Deployer | Terminated\n");
        EXPECT_EQ(session.file("migration.log.extra").find("extra") != std::string::npos, debug);
        const auto status = std::filesystem::status(session.path + "/migration.log");
        EXPECT_EQ(static_cast<unsigned>(status.permissions()), 0600U);
    }
}

}  // namespace
}  // namespace zelvo
