#include "report/result_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "report/error_functions.h"
#include "report/object_logger.h"
#include "run.h"

namespace zelvo {
namespace {

using test::failure;
using test::Fault;
using test::faultOf;

const std::string kHead = "<?xml version=\"1.0\"?>\n";

// The "message" element of test::failure(what), around the element of what caused it.
std::string message(const std::string& what, const std::string& cause = "") {
    const std::string place = cause.empty()
                                  ? "<context>void f()</context><file>./f.cpp</file><line>7</line>"
                                  : "<context>void g()</context><file>./g.cpp</file><line>8</line>";
    return "<message code=\"NotSupportedOperation\" severity=\"error\">" + place +
           "<text>The operation is not supported: " + what + "</text>" + cause + "</message>";
}

class ResultLog : public testing::Test {
  protected:
    // The result document of a run that does this.
    template <class Work>
    std::string resultOf(bool isSuccess, Work&& work) {
        LogLifetimeController controller;
        work();
        EXPECT_EQ(theLog->getDepth(), 0);
        theLog->setSuccess(isSuccess);
        controller.finish();
        return session_.file("migration.result");
    }
    static std::string error(const std::string& inside) {
        return kHead + "<execution-result status=\"error\">" + inside + "</execution-result>\n";
    }

    test::Session session_;
    test::MemoryLog debugLog_;
};

TEST_F(ResultLog, NothingFailed) {
    EXPECT_EQ(resultOf(true, [] { const ObjectLogger object("a.tst", "domain"); }),
              kHead + "<execution-result status=\"success\"/>\n");
    EXPECT_EQ(resultOf(false, [] {}), kHead + "<execution-result status=\"error\"/>\n");
}

// Catches objects that stay without a message, and parents that go although a child has one.
TEST_F(ResultLog, OnlyObjectsWithFailuresStay) {
    const auto work = [] {
        const ObjectLogger client("jo & \"co\"", "client");
        {
            const ObjectLogger clean("clean.tst", "domain");
            const ObjectLogger deep("deep", "mailname");
        }
        {
            const ObjectLogger domain("bad.tst", "domain");
            const ObjectLogger mail("box", "mailname");
            EXPECT_EQ(theLog->getDepth(), 3);
            theLog->log(failure("<b> & co"));
        }
        const ObjectLogger last("last.tst", "domain");
    };
    EXPECT_EQ(resultOf(false, work),
              error("<object name=\"jo &amp; &quot;co&quot;\" type=\"client\">"
                    "<object name=\"bad.tst\" type=\"domain\">"
                    "<object name=\"box\" type=\"mailname\">" +
                    message("&lt;b&gt; &amp; co") + "</object></object></object>"));
}

// Catches a mark that is lost, or that goes to a sibling, when an inner object closes.
TEST_F(ResultLog, MessagesAndObjectsStandInTheOrderOfEvents) {
    const auto work = [] {
        theLog->log(failure("first"));
        const ObjectLogger outer("o", "domain");
        { const ObjectLogger inner("i", "hosting"); }
        theLog->log(failure("second"));
    };
    EXPECT_EQ(resultOf(false, work),
              error(message("first") + "<object name=\"o\" type=\"domain\">" + message("second") +
                    "</object>"));
}

TEST_F(ResultLog, CausesAreNested) {
    const auto work = [] {
        theLog->log(failure("outer", failure("middle", ExTraceable("Plain", "no place"))));
    };
    const std::string plain =
        "<message code=\"Plain\" severity=\"error\"><text>no place</text></message>";
    EXPECT_EQ(resultOf(false, work), error(message("outer", message("middle", plain))));
}

// Catches an object that stays open behind a failure that leaves it.
TEST_F(ResultLog, AFailureClosesTheObjectsItLeaves) {
    const auto work = [] {
        try {
            const ObjectLogger client("jo", "client");
            const ObjectLogger domain("a.tst", "domain");
            throw failure("gone");
        } catch (const ExTraceable& caught) {
            theLog->log(caught);
        }
    };
    EXPECT_EQ(resultOf(false, work), error(message("gone")));
    const std::vector<std::string> lines = {"=> jo client", "=> a.tst domain", "++ a.tst domain",
                                            "++ jo client"};
    EXPECT_EQ(debugLog_.lines, lines);
}

// Catches an old result that a poller takes for that of this run, and a file that others can read.
TEST_F(ResultLog, FileIsAbsentWhileTheRunIsUnderWay) {
    test::writeFile(session_.path / "migration.result", "old");
    LogLifetimeController controller;
    EXPECT_FALSE(session_.has("migration.result"));
    controller.finish();
    EXPECT_EQ(theLog, nullptr);
    struct stat status {};
    ASSERT_EQ(stat((session_.path / "migration.result").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, test::kPanelUser);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

// Catches a result that is not written when the action is left by a failure.
TEST_F(ResultLog, IsSavedOnTheWayOutOfAFailure) {
    try {
        const LogLifetimeController controller;
        throw std::runtime_error("the action");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(theLog, nullptr);
    }
    EXPECT_EQ(session_.file("migration.result"), kHead + "<execution-result status=\"error\"/>\n");
}

// Catches a failed save that is swallowed on the normal way.
TEST_F(ResultLog, AFailedSaveGoesUp) {
    LogLifetimeController controller;
    session_.remove();
    EXPECT_EQ(faultOf([&] { controller.finish(); }).first, "CantCreateTempFile");
    EXPECT_EQ(theLog, nullptr);
}

// Catches a failed save that ends the process, or hides why the action was left.
TEST_F(ResultLog, AFailedSaveLetsTheFirstFailureGoOn) {
    const Fault seen = faultOf([&] {
        const LogLifetimeController controller;
        session_.remove();
        throw failure("the action");
    });
    EXPECT_EQ(seen.second, "The operation is not supported: the action");
    ASSERT_EQ(debugLog_.lines.size(), 1U);
    EXPECT_TRUE(debugLog_.lines[0].starts_with("CantCreateTempFile: ")) << debugLog_.lines[0];
}

// Catches another order of the logs, and a need for logs that a run does not have.
TEST_F(ResultLog, ErrorFunctionsTellBothLogs) {
    const auto work = [] { deploy_error_func(failure("x")); };
    EXPECT_EQ(resultOf(false, work), error(message("x")));
    const std::vector<std::string> lines = {
        "NotSupportedOperation: The operation is not supported: x [./f.cpp:7]"};
    EXPECT_EQ(debugLog_.lines, lines);
    EXPECT_NO_THROW(deploy_error_func(failure("without a result log")));
    theDebugLog = nullptr;
    EXPECT_NO_THROW(deploy_error_func(failure("without any log")));
    theDebugLog = &debugLog_;
}

// Catches a failure that goes on with its place and cause, and is told twice with them.
TEST_F(ResultLog, TheThrowingErrorFunctionStripsTheFailure) {
    try {
        deploy_error_func_throw(failure("outer", failure("inner")));
        FAIL();
    } catch (const ExTraceable& thrown) {
        EXPECT_EQ(typeid(thrown), typeid(ExTraceable));
        EXPECT_EQ(formatPlainTextMessage(thrown),
                  "NotSupportedOperation: The operation is not supported: outer [:0]");
    }
}

}  // namespace
}  // namespace zelvo
