#include "commons/system_error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <typeinfo>

#include "commons/termination.h"

namespace {

using zelvo::ExSystemError;
using zelvo::SystemError;
using zelvo::throwSystemError;

const std::type_info& typeThrownFor(int number) {
    try {
        throwSystemError("m", number);
    } catch (const SystemError& failure) {
        EXPECT_EQ(number, failure.number());
        return typeid(failure);
    }
}

TEST(SystemError, HasATypeForTheNumbersThatCallersPickOut) {
    EXPECT_EQ(typeid(ExSystemError<1>), typeThrownFor(EPERM));
    EXPECT_EQ(typeid(ExSystemError<2>), typeThrownFor(ENOENT));
    EXPECT_EQ(typeid(ExSystemError<4>), typeThrownFor(EINTR));
    EXPECT_EQ(typeid(ExSystemError<10>), typeThrownFor(ECHILD));
    EXPECT_EQ(typeid(ExSystemError<11>), typeThrownFor(EAGAIN));
    EXPECT_EQ(typeid(SystemError), typeThrownFor(EACCES));
}

TEST(SystemError, TakesErrnoAsAPlainOne) {
    try {
        errno = ENOENT;
        throwSystemError("opening");
    } catch (const SystemError& failure) {
        EXPECT_EQ(typeid(SystemError), typeid(failure));
        EXPECT_STREQ("opening: No such file or directory", failure.what());
    }
}

TEST(SystemError, NeedsNoMessage) {
    EXPECT_STREQ("No such file or directory", SystemError("", ENOENT).what());
}

TEST(Termination, OwesOneLineASignal) {
    EXPECT_FALSE(zelvo::isTerminationRequested());
    zelvo::noteTerminationSignal();
    zelvo::noteTerminationSignal();
    EXPECT_TRUE(zelvo::isTerminationRequested());
    EXPECT_EQ(2, zelvo::takeTerminationSignals());
    EXPECT_EQ(0, zelvo::takeTerminationSignals());
    EXPECT_TRUE(zelvo::isTerminationRequested());
}

}  // namespace
