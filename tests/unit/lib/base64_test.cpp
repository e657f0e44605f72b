#include "lib/base64.h"

#include <gtest/gtest.h>

namespace {

struct Base64Case {
    std::string text;
    std::string bytes;
    std::string complaint;
};

class Base64 : public testing::TestWithParam<Base64Case> {};

TEST_P(Base64, Decodes) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(GetParam().bytes, zelvo::base64_decode(GetParam().text));
    EXPECT_EQ(GetParam().complaint, testing::internal::GetCapturedStderr());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Base64,
    testing::Values(Base64Case{"", "", ""}, Base64Case{"Zg==", "f", ""},
                    Base64Case{"Zm8=", "fo", ""}, Base64Case{"Zm9v", "foo", ""},
                    Base64Case{"Zm9vYmFy", "foobar", ""}, Base64Case{"Zm8", "fo", ""},
                    Base64Case{"Z", "", ""}, Base64Case{"Zg==Zg==", "f", ""},
                    Base64Case{"+/+/", "\xFB\xFF\xBF", ""},
                    Base64Case{"AAAA", std::string(3, '\0'), ""},
                    Base64Case{"Zm9v\nYmFy", "foobar", "Bad base64 symbol: \n"},
                    Base64Case{"Z-m9\xFFv", "foo", "Bad base64 symbol: -Bad base64 symbol: \xFF"}));

}  // namespace
