// One call of a panel utility, and its form as one line of text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sandbox {

struct Call {
    std::string utility;
    std::vector<std::string> arguments;
    std::vector<std::pair<std::string, std::string>> environment;  // in the order of the names
    std::string input;

    // The value that the caller set, or null. Set to nothing is not the same as not set.
    const std::string* env(std::string_view name) const;
};

// The variables that a call is known by, in the order of their names.
const std::vector<std::string>& callVariables();

// "NAME=VALUE... UTILITY ARGUMENT... <<<INPUT", each part through quoteWord, without a newline at
// the end. An empty input leaves its part out.
std::string formatCall(const Call& call);

// Reads back what formatCall wrote. Throws std::runtime_error for a line without a utility.
Call parseCall(std::string_view line);

}  // namespace sandbox
