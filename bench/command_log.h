// The commands of a run, taken from its log.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "bare_command.h"

namespace bench {

// Reads every command that a migration.log tells of, with the variables that were set for it.
// Raises std::runtime_error for a log without commands.
std::vector<BareCommand> readCommands(const std::string& logFile);

// How many they are, or how many of them have this text.
std::size_t countCommands(const std::string& logFile, std::string_view text = {});

}  // namespace bench
