// Fault rules: what a stand-in is told to do wrong, and when.
//
//   call 17: exit 3
//   call 20+: stderr 'disk is full\n'; exit 5
//   match client --create bob: after; exit 1
//   match client --update * -status: signal SEGV
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct Action {
    std::string name;
    std::string value;  // empty when the action takes none

    long number() const;  // throws std::runtime_error when the value is no number
};

struct Rule {
    bool counted = false;                           // by number, not by words
    long number = 0;                                // from 1
    bool onwards = false;                           // and every later one
    std::vector<std::optional<std::string>> words;  // utility and first arguments; none: any word
    std::vector<Action> actions;

    bool has(std::string_view action) const;
    bool fits(long callNumber, const std::vector<std::string>& callWords) const;
};

// Reads all rules. `counter` is the word for numbered rules, "call" or "request". Throws
// std::runtime_error with the line at fault.
std::vector<Rule> parseRules(std::string_view text, std::string_view counter);

// The first rule that fits, or null.
const Rule* findRule(const std::vector<Rule>& rules, long callNumber,
                     const std::vector<std::string>& callWords);

// Takes "TERM", "SIGTERM" or "15". Throws std::runtime_error for any other word.
int signalNumber(const std::string& name);

}  // namespace sandbox
