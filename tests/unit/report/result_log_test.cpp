#include "report/result_log.h"

#include "report/error_functions.h"
#include "report/object_logger.h"
#include "run.h"

namespace zelvo {
namespace {

using test::failure;

// The "message" element of a failure, around that of what caused it.
std::string message(const std::string& what, const std::string& cause = "") {
    return "<message code=\"NotSupportedOperation\" severity=\"error\"><context>void f()</context>"
           "<file>./f.cpp</file><line>7</line><text>The operation is not supported: " +
           what + "</text>" + cause + "</message>";
}

const std::string kHead = "<?xml version=\"1.0\"?>\n<execution-result status=\"error\"";

class ResultLog : public testing::Test {
  protected:
    std::string result() const { return session_.file("migration.result"); }

    test::Session session_;
    RecordingLog debugLog_;
};

// Tells something on the way out of a failure.
struct LastWord {
    ~LastWord() { theLog->log(failure("on the way")); }
};

// Raises a failure out of an object, with what is logged in it first.
void leave(const std::string& name, const std::string& told = "") {
    const ObjectLogger domain(name, "domain");
    if (!told.empty()) {
        const ObjectLogger mail("box", "mailname");
        theLog->log(failure(told));
    }
    throw failure("gone");
}

// Catches objects that stay without a message, parents that go although a child has one, an object
// that stays open behind a failure that leaves it, and another order than that of the events. A
// failure that is told in the object around the one that it left, or twice in that, or in one that
// it left long ago, or before another; and what nobody tells of.
TEST_F(ResultLog, OnlyObjectsWithFailuresStay) {
    LogLifetimeController controller;
    deploy_error_func(failure("first"));
    {
        const ObjectLogger client("jo & \"co\"", "client");
        { const ObjectLogger clean("clean.tst", "domain"); }
        try {
            const LastWord last;
            leave("bad.tst", "<b>");
        } catch (const ExTraceable&) {
            theLog->log(failure("outer", failure("middle", ExTraceable("Plain", "x"))));
            theLog->log(failure("next"));
        }
        EXPECT_THROW(leave("old.tst"), ExTraceable);
        {
            const ObjectLogger other("other.tst", "domain");
            theLog->log(failure("its own"));
        }
        EXPECT_THROW(leave("dropped.tst"), ExTraceable);
        forgetFailure();
        theLog->log(failure("late"));
    }
    EXPECT_THROW(leave("silent.tst"), ExTraceable);
    controller.finish();
    const std::string plain = R"(<message code="Plain" severity="error"><text>x</text></message>)";
    EXPECT_EQ(result(),
              kHead + ">" + message("first") +
                  "<object name=\"jo &amp; &quot;co&quot;\" type=\"client\"><object "
                  "name=\"bad.tst\" type=\"domain\"><object name=\"box\" type=\"mailname\">" +
                  message("&lt;b&gt;") + "</object>" + message("outer", message("middle", plain)) +
                  "</object>" + message("on the way") + message("next") +
                  "<object name=\"other.tst\" type=\"domain\">" + message("its own") + "</object>" +
                  message("late") + "</object></execution-result>\n");
    EXPECT_EQ(debugLog_.lines.back(), "++ silent.tst domain");
}

// Catches a failed save that is swallowed on the normal way, and one that ends the process, or
// hides why the action was left.
TEST_F(ResultLog, AFailedSaveGoesUpUnlessAnotherFailureDoes) {
    LogLifetimeController outer;
    session_.remove();
    const std::string save = test::faultOf([&] { outer.finish(); });
    EXPECT_TRUE(save.starts_with("CantCreateTempFile: ")) << save;
    EXPECT_EQ(test::faultOf([] {
                  const LogLifetimeController controller;
                  throw failure("the action");
              }),
              "NotSupportedOperation: The operation is not supported: the action");
    EXPECT_EQ(debugLog_.lines, std::vector<std::string>{"failure " + save});
}

}  // namespace
}  // namespace zelvo
