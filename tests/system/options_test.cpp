// What holds for a whole run: the order of its stages, whose objects they are, on whose behalf it
// works, what it leaves for the end and what it tells people.

#include "scenario.h"

namespace {

TEST(Run, GoesThroughItsStages) { runCases("options/runs.txt"); }
TEST(Run, SetsTheDefaultDomainsOfAddresses) { runCases("options/default_domains.txt"); }

}  // namespace
