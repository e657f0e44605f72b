#include "commons/exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commons/errors.h"
#include "commons/handle.h"
#include "commons/text_formatter.h"

ERROR_TAG(UnitOuter, "outer %1% of %2%");
ERROR_TAG(UnitInner, "inner");

class UnitOwner {
  public:
    static void Failed(bool) {}
};
ERROR_DEFINITION(UnitOwner::Failed, "UnitOwner::Code", "owned <%1%>");

namespace {

using testing::MatchesRegex;
using zelvo::ExTaggedIncludable;
using zelvo::ExTraceable;
using zelvo::formatPlainTextMessage;
using zelvo::UnitInner;
using zelvo::UnitOuter;

// A failure three deep whose inner ones were destroyed long ago when it is caught.
[[noreturn]] void raiseChain() {
    try {
        try {
            throw EXC(UnitOwner::Failed) % "a&b";
        } catch (const ExTraceable& failure) {
            throw EXC_INNER(UnitInner, failure);
        }
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(UnitOuter, failure) % 1 % std::string("2");
    }
}

constexpr const char* kChain =
    "UnitOuter: outer 1 of 2 \\[.*exception_test.cpp:[0-9]+\\]\nInner exception:\n"
    "UnitInner: inner \\[.*exception_test.cpp:[0-9]+\\]\nInner exception:\n"
    "UnitOwner::Code: owned <a&b> \\[.*exception_test.cpp:[0-9]+\\]";

TEST(Exception, TellsItsWholeChain) {
    try {
        raiseChain();
    } catch (const zelvo::Exc<&UnitOuter>& failure) {
        EXPECT_STREQ("outer 1 of 2", failure.what());
        EXPECT_THAT(formatPlainTextMessage(failure), MatchesRegex(kChain));
    }
}

TEST(Exception, IsClonedWithItsChain) {
    std::unique_ptr<ExTraceable> clone;
    try {
        raiseChain();
    } catch (const ExTraceable& failure) {
        clone.reset(failure.clone());
    }
    EXPECT_THAT(formatPlainTextMessage(*clone), MatchesRegex(kChain));
    EXPECT_NE(nullptr, dynamic_cast<zelvo::Exc<&UnitOuter>*>(clone.get()));
}

TEST(Exception, HasNoPlaceWithoutOne) {
    const ExTaggedIncludable inner("In", "i");
    EXPECT_EQ("Out: o [:0]\nInner exception:\nIn: i [:0]",
              formatPlainTextMessage(ExTaggedIncludable("Out", "o", inner)));
    // What is thrown on as the root class loses place and cause.
    const ExTraceable sliced(EXC_INNER(UnitInner, inner));
    EXPECT_EQ("UnitInner: inner [:0]", formatPlainTextMessage(sliced));
}

TEST(Exception, DoesNotLendItsPlaceToItsCause) {
    const ExTraceable cause("In", "i");
    EXPECT_THAT(formatPlainTextMessage(EXC_INNER(UnitInner, cause)),
                MatchesRegex("UnitInner: inner \\[.*_test.cpp:[0-9]+\\]\nInner exception:\n"
                             "In: i \\[:0\\]"));
}

// Notes what a visitor is told, in order.
class Recorder : public zelvo::ExInfoVisitor {
  public:
    void setCode(const std::string& code) override { told += "code=" + code + ";"; }
    void setMessage(const std::string& text) override { told += "message=" + text + ";"; }
    void setContext(const std::string& text) override { told += "context=" + text + ";"; }
    void setFile(const std::string&) override { told += "file;"; }
    void setLine(int line) override { told += "line=" + std::to_string(line) + ";"; }
    void advanceToInnerException() override { told += "inner;"; }

    std::string told;
};

TEST(Exception, IsReadFromThePlaceInwards) {
    Recorder recorder;
    zelvo::Exc<&UnitOuter> failure("void f(int)", "./f.cpp", 7, ExTraceable("In", "i"));
    failure % 1 % 2;
    failure.accept(recorder);
    EXPECT_EQ(
        "context=void f(int);file;line=7;code=UnitOuter;message=outer 1 of 2;inner;code=In;"
        "message=i;",
        recorder.told);
}

struct CountingDestruction {
    void operator()(int* value) const { ++*value; }
};

TEST(Handle, ReleasesOnceAndRefusesNothing) {
    int released = 0;
    {
        const zelvo::Handle<int*, CountingDestruction> handle(&released);
        EXPECT_EQ(&released, handle.get());
    }
    EXPECT_EQ(1, released);
    try {
        const zelvo::Handle<char*> handle(nullptr);
        ADD_FAILURE();
    } catch (const zelvo::Exc<&zelvo::InvalidHandle>& failure) {
        EXPECT_THAT(formatPlainTextMessage(failure),
                    MatchesRegex("InvalidHandle: Invalid handle passed \\[./handle:[0-9]+\\]"));
    }
}

}  // namespace
