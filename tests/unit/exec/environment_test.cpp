#include "exec/environment.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <tuple>

#include "exec/program_path.h"

using namespace zelvo;

TEST(EnvironmentVector, OverwritesInPlaceAndAddsInMapOrder) {
    char entries[][16] = {"HOME=/root", "LANG=C", "LANGUAGE=de"};
    char* inherited[] = {entries[0], entries[1], entries[2], nullptr};
    char** const saved = environ;
    environ = inherited;
    const EnvironmentVector environment({{"ZULU", "1"}, {"LANG", "en_US.UTF-8"}, {"ALPHA", ""}});
    environ = saved;
    char* const* entry = environment.data();
    for (const char* expected :
         {"HOME=/root", "LANG=en_US.UTF-8", "LANGUAGE=de", "ALPHA=", "ZULU=1"}) {
        EXPECT_STREQ(*entry++, expected);
    }
    EXPECT_EQ(*entry, nullptr);
    EXPECT_STREQ(environment.find("LANG"), "en_US.UTF-8");
    EXPECT_EQ(environment.find("LAN"), nullptr);
    for (const char* name : {"", "A=B", "=A"}) {
        EXPECT_EQ(EnvironmentVector(Environment{{name, "x"}}).error(), EINVAL) << name;
    }
}

TEST(ProgramCandidates, AreThoseOfExecvp) {
    const std::tuple<const char*, const char*, std::vector<std::string>> rows[] = {
        {"/bin/tar", "/usr/bin", {"/bin/tar"}},
        {"tar", "/bin::/sbin:", {"/bin/tar", "tar", "/sbin/tar", "tar"}},
        {"tar", nullptr, {"/bin/tar", "/usr/bin/tar"}},
        {"", "/bin", {}},
    };
    for (const auto& [utility, searchPath, paths] : rows) {
        EXPECT_EQ(programCandidates(utility, searchPath), paths) << utility;
    }
}
