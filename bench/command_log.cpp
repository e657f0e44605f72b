#include "command_log.h"

#include <fstream>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "words.h"

namespace bench {

namespace {

// What stands behind a mark in a line.
std::optional<std::string> behind(const std::string& line, std::string_view mark) {
    const std::size_t place = line.find(mark);
    return place == std::string::npos ? std::nullopt
                                      : std::optional(line.substr(place + mark.size()));
}

std::vector<std::string> argumentsOf(const std::string& text) {
    std::vector<std::string> arguments;
    for (const sandbox::Word& word : sandbox::splitWords(text)) {
        arguments.push_back(word.text);
    }
    return arguments;
}

// "NAME]=VALUE" as "NAME=VALUE".
std::string variable(const std::string& text) {
    const std::size_t end = text.find("]=");
    return text.substr(0, end) + text.substr(end + 1);
}

}  // namespace

std::vector<BareCommand> readCommands(const std::string& logFile) {
    std::ifstream log(logFile);
    std::vector<BareCommand> commands;
    std::vector<std::string> variables;
    for (std::string line; std::getline(log, line);) {
        if (const auto text = behind(line, " p.log: ENV[")) {
            variables.push_back(variable(*text));
        } else if (const auto call = behind(line, " p.log: Executing utility: ")) {
            commands.emplace_back(argumentsOf(*call), std::exchange(variables, {}));
        }
    }
    if (commands.empty()) {
        throw std::runtime_error("no command in " + logFile);
    }
    return commands;
}

}  // namespace bench
