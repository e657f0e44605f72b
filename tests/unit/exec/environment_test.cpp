#include "exec/environment.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>

#include "exec/program_path.h"

using namespace zelvo;
using testing::ElementsAre;

namespace {

// Replaces the process's environment for its lifetime.
class ScopedEnviron {
  public:
    explicit ScopedEnviron(std::vector<std::string> entries) : entries_(std::move(entries)) {
        for (std::string& entry : entries_) {
            pointers_.push_back(entry.data());
        }
        pointers_.push_back(nullptr);
        environ = pointers_.data();
    }
    ~ScopedEnviron() { environ = saved_; }

  private:
    char** saved_ = environ;
    std::vector<std::string> entries_;
    std::vector<char*> pointers_;
};

std::vector<std::string> entriesOf(const EnvironmentVector& environment) {
    std::vector<std::string> entries;
    for (char* const* entry = environment.data(); *entry != nullptr; ++entry) {
        entries.emplace_back(*entry);
    }
    return entries;
}

}  // namespace

TEST(EnvironmentVector, OverwritesInPlaceAndAddsInMapOrder) {
    const ScopedEnviron inherited({"HOME=/root", "LANG=C", "LANGUAGE=de"});
    const EnvironmentVector environment({{"ZULU", "1"}, {"LANG", "en_US.UTF-8"}, {"ALPHA", ""}});
    EXPECT_THAT(entriesOf(environment),
                ElementsAre("HOME=/root", "LANG=en_US.UTF-8", "LANGUAGE=de", "ALPHA=", "ZULU=1"));
    EXPECT_EQ(environment.error(), 0);
    EXPECT_STREQ(environment.find("LANG"), "en_US.UTF-8");
    EXPECT_EQ(environment.find("LAN"), nullptr);
}

TEST(EnvironmentVector, RefusesNamesThatSetenvRefuses) {
    for (const char* name : {"", "A=B", "=A"}) {
        EXPECT_EQ(EnvironmentVector(Environment{{name, "x"}}).error(), EINVAL)
            << "\"" << name << "\"";
    }
}

TEST(ProgramCandidates, AreThoseOfExecvp) {
    using Paths = std::vector<std::string>;
    const struct {
        const char* utility;
        const char* searchPath;
        Paths expected;
    } rows[] = {
        {"/bin/tar", "/usr/bin", {"/bin/tar"}},
        {"./tar", "/usr/bin", {"./tar"}},
        {"tar", "/usr/bin:/bin", {"/usr/bin/tar", "/bin/tar"}},
        {"tar", "/bin::/sbin:", {"/bin/tar", "tar", "/sbin/tar", "tar"}},
        {"tar", "", {"tar"}},
        {"tar", nullptr, {"/bin/tar", "/usr/bin/tar"}},
        {"", "/bin", {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(programCandidates(row.utility, row.searchPath), row.expected) << row.utility;
    }
}
