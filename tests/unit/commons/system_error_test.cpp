#include "commons/system_error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <typeinfo>

namespace {

using zelvo::ExSystemError;
using zelvo::SystemError;

void expectThrown(int number, const std::type_info& type, const char* text) {
    try {
        zelvo::throwSystemError("opening", number);
    } catch (const SystemError& failure) {
        EXPECT_EQ(type, typeid(failure));
        EXPECT_STREQ(text, failure.what());
    }
}

TEST(SystemError, HasATypeForTheNumbersThatCallersPickOut) {
    expectThrown(1, typeid(ExSystemError<1>), "opening: Operation not permitted");
    expectThrown(2, typeid(ExSystemError<2>), "opening: No such file or directory");
    expectThrown(4, typeid(ExSystemError<4>), "opening: Interrupted system call");
    expectThrown(10, typeid(ExSystemError<10>), "opening: No child processes");
    expectThrown(11, typeid(ExSystemError<11>), "opening: Resource temporarily unavailable");
    expectThrown(13, typeid(SystemError), "opening: Permission denied");
    errno = ENOENT;
    expectThrown(0, typeid(SystemError), "opening: No such file or directory");
    EXPECT_STREQ("No such file or directory", SystemError("", ENOENT).what());
}

}  // namespace
