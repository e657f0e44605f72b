#include "lib/idn.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

using zelvo::idn::IdnaError;
using zelvo::idn::toAscii;
using zelvo::idn::toUtf8;

TEST(Idn, ConvertsBothWays) {
    EXPECT_EQ("xn--bcher-kva.example", toAscii("b\xC3\xBC"
                                               "cher.example"));
    EXPECT_EQ(
        "b\xC3\xBC"
        "cher.example",
        toUtf8("xn--bcher-kva.example"));
    EXPECT_EQ("xn--bcher-kva.example", toAscii("B\xC3\x9C"
                                               "CHER.Example"));
    EXPECT_EQ("example.com", toAscii("Example.COM"));
    EXPECT_EQ("_dmarc.example.com", toAscii("_dmarc.example.com"));
    EXPECT_EQ("", toAscii(""));
}

TEST(Idn, DoesNotDependOnTheLocale) {
    ASSERT_STREQ("C", setlocale(LC_ALL, nullptr));
    EXPECT_EQ("xn--r8jz45g.jp", toAscii("\xE4\xBE\x8B\xE3\x81\x88.jp"));
}

TEST(Idn, RefusesWithTheCodeOfTheLibrary) {
    const auto codeFor = [](const std::string& name) {
        try {
            toAscii(name);
        } catch (const IdnaError& failure) {
            EXPECT_STREQ(idn_strerror(failure.code()), failure.what());
            return failure.code();
        }
        return 0;
    };
    EXPECT_EQ(5, codeFor("a..b"));
    EXPECT_EQ(5, codeFor(std::string(64, 'a') + ".com"));
    EXPECT_EQ(8, codeFor("xn--\xC3\xA9"));
    EXPECT_EQ(9, codeFor("b\xFC"));
    EXPECT_THROW(toUtf8("b\xFC"), IdnaError);
}

TEST(Idn, NamesTheCodes) {
    EXPECT_STREQ("Success", idn_strerror(0));
    EXPECT_STREQ("Invalid length", idn_strerror(5));
    EXPECT_STREQ("Iconv error", idn_strerror(9));
    EXPECT_STREQ("Cannot allocate buffer", idn_strerror(201));
    EXPECT_STREQ("Unknown error", idn_strerror(10));
    EXPECT_STREQ("Unknown error", idn_strerror(-1));
}

}  // namespace
