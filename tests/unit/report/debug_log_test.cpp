#include "report/debug_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "commons/termination.h"
#include "lib/read_configuration.h"
#include "report/log4cpp_setup.h"
#include "run.h"

namespace zelvo {
namespace {

// log4cpp is configured once in a process, so each test does its work in a child.
class DebugLogTest : public testing::Test {
  protected:
    DebugLogTest() {
        GTEST_FLAG_SET(death_test_style, "fast");
        autoprepend();
        test::writeFile(test::PanelBox::productRoot() / "RMK/log4cpp.properties",
                        "rootCategory=DEBUG, A1, A2\n"
                        "appender.A1=FileAppender\n"
                        "appender.A1.fileName=${LOG_FILE_NAME}\n"
                        "appender.A1.threshold=INFO\n"
                        "appender.A1.layout=PatternLayout\n"
                        "appender.A1.layout.ConversionPattern=%c %p %m%n\n"
                        "appender.A2=FileAppender\n"
                        "appender.A2.fileName=${LOG_FILE_NAME}.extra\n"
                        "appender.A2.layout=PatternLayout\n"
                        "appender.A2.layout.ConversionPattern=extra %m%n\n");
    }

    // Runs the work in a child, which ends without the end of the test program: that would take
    // the panel along.
    static void inChild(const std::function<void()>& work) {
        EXPECT_EXIT(
            {
                work();
                fflush(nullptr);
                _exit(testing::Test::HasFailure() ? 1 : 0);
            },
            testing::ExitedWithCode(0), "");
    }

    test::Session session_;
};

// Catches a reference that is not filled or that the characters of the path break, another category
// or priority, and lines of the front end that show although the configuration hides them.
TEST_F(DebugLogTest, WritesToTheLogFileOfTheSession) {
    inChild([] {
        const DebugLogLifetimeController controller(false, false);
        theDebugLog->log(std::string("100% %s text"));
        theDebugLog->log(boost::format("%1%-%2%") % 1 % 2);
        theDebugLog->log(test::failure("x", test::failure("y")));
        deployerCategory() << log4cpp::Priority::DEBUG << "hidden";
        noteTerminationSignal();
    });
    EXPECT_EQ(session_.file("migration.log"),
              "p.log INFO 100% %s text\n"
              "p.log INFO 1-2\n"
              "p.log INFO NotSupportedOperation: The operation is not supported: x [./g.cpp:8]\n"
              "Inner exception:\n"
              "NotSupportedOperation: The operation is not supported: y [./f.cpp:7]\n"
              "p.log INFO Deployer | Terminated\n");
    EXPECT_EQ(session_.file("migration.log.extra"), "");
}

// Catches the appender's removal in the mode that it is there for, and the flags.
TEST_F(DebugLogTest, DebugKeepsTheExtraAppender) {
    inChild([] {
        const DebugLogLifetimeController controller(true, true);
        EXPECT_TRUE(theDebugLog->isDebugMode());
        EXPECT_FALSE(theDebugLog->isVerboseMode());
        deployerCategory() << log4cpp::Priority::DEBUG << "shown";
    });
    EXPECT_EQ(session_.file("migration.log.extra"), "extra shown\n");
    inChild([] {
        {
            const DebugLogLifetimeController controller(true, false);
            EXPECT_FALSE(theDebugLog->isDebugMode());
            EXPECT_TRUE(theDebugLog->isVerboseMode());
        }
        EXPECT_EQ(theDebugLog, nullptr);
    });
}

// Catches passwords in a file that others can read, and a process that is left changed.
TEST_F(DebugLogTest, LogIsPrivateAndTheProcessIsAsBefore) {
    inChild([] {
        umask(022);
        setenv("LOG_FILE_NAME", "/none", 1);
        const DebugLogLifetimeController controller(false, false);
        EXPECT_STREQ(getenv("LOG_FILE_NAME"), "/none");
        EXPECT_EQ(umask(022), 022U);
    });
    struct stat status {};
    ASSERT_EQ(stat((session_.path / "migration.log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(DebugLogTest, ConfigurationMustBeThere) {
    std::filesystem::remove(test::PanelBox::productRoot() / "RMK/log4cpp.properties");
    inChild([] {
        EXPECT_THROW(DebugLogLifetimeController(false, false), std::runtime_error);
        EXPECT_EQ(theDebugLog, nullptr);
    });
}

}  // namespace
}  // namespace zelvo
