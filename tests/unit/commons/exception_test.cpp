#include "commons/exception.h"

#include <gtest/gtest.h>

#include "commons/errors.h"
#include "commons/handle.h"
#include "commons/text_formatter.h"

ERROR_TAG(UnitOuter, "outer %1% of %2%");
ERROR_TAG(UnitInner, "inner");

namespace {

using zelvo::Exc;
using zelvo::ExTraceable;
using zelvo::formatPlainTextMessage;

// A failure three deep, cloned before the original and its causes were destroyed.
std::unique_ptr<ExTraceable> chain() {
    const zelvo::ExTaggedIncludable innermost("In", "a&b");
    const Exc<&zelvo::UnitInner> middle("void f()", "./f.cpp", 7, innermost);
    Exc<&zelvo::UnitOuter> outer("int g()", "./g.cpp", 8, middle);
    outer % 1 % std::string("2");
    return std::unique_ptr<ExTraceable>(outer.clone());
}

TEST(Exception, TellsItsWholeChain) {
    const auto failure = chain();
    EXPECT_STREQ("outer 1 of 2", failure->what());
    // A cause without a place does not borrow one.
    EXPECT_EQ(
        "UnitOuter: outer 1 of 2 [./g.cpp:8]\nInner exception:\n"
        "UnitInner: inner [./f.cpp:7]\nInner exception:\nIn: a&b [:0]",
        formatPlainTextMessage(*failure));
    EXPECT_NE(nullptr, dynamic_cast<Exc<&zelvo::UnitOuter>*>(failure.get()));
    // Thrown on as the root class it loses place and cause.
    EXPECT_EQ("UnitOuter: outer 1 of 2 [:0]", formatPlainTextMessage(ExTraceable(*failure)));
}

TEST(Handle, ReleasesOnceAndRefusesNothing) {
    struct Count {
        void operator()(int* value) const { ++*value; }
    };
    int released = 0;
    { const zelvo::Handle<int*, Count> handle(&released); }
    EXPECT_EQ(1, released);
    try {
        const zelvo::Handle<char*> handle(nullptr);
        ADD_FAILURE();
    } catch (const Exc<&zelvo::InvalidHandle>& failure) {
        EXPECT_EQ(0U, formatPlainTextMessage(failure).find(
                          "InvalidHandle: Invalid handle passed [./handle:"));
    }
}

}  // namespace
