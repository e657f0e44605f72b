// The command line of restorectl.
#pragma once

#include <optional>

#include "restorectl/backup_commands.h"
#include "restorectl/settings.h"

namespace zelvo {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

// Fills settings and command. Returns the exit status when there is nothing to run: help was asked
// for and printed, or the usage is wrong and that is told on standard error. Raises UsageError.
std::optional<int> parseCommandLine(int argc, char** argv, Settings& settings, Command& command);

}  // namespace zelvo
