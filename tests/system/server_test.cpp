// The panel itself: how a bare one and a working one are configured from a dump.

#include "scenario.h"

namespace {

TEST(Server, IsConfigured) { runCases("server/configuration.txt"); }

}  // namespace
