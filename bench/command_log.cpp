#include "command_log.h"

#include <fstream>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "words.h"

namespace bench {

namespace {

constexpr std::string_view kCommandMark = " p.log: Executing utility: ";

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
        } else if (const auto call = behind(line, kCommandMark)) {
            commands.emplace_back(argumentsOf(*call), std::exchange(variables, {}));
        }
    }
    if (commands.empty()) {
        throw std::runtime_error("no command in " + logFile);
    }
    return commands;
}

std::size_t countCommands(const std::string& logFile, std::string_view text) {
    std::ifstream log(logFile);
    std::size_t count = 0;
    for (std::string line; std::getline(log, line);) {
        const auto call = behind(line, kCommandMark);
        count += call && call->find(text) != std::string::npos ? 1 : 0;
    }
    return count;
}

}  // namespace bench
