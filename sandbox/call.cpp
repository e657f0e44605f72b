#include "call.h"

#include <algorithm>
#include <stdexcept>

#include "words.h"

namespace sandbox {

namespace {

constexpr std::string_view kInputMark = "<<<";

// Splits NAME=VALUE when the name is one of the variables of a call.
bool readVariable(const std::string& word, Call& call) {
    const auto equals = word.find('=');
    if (equals == std::string::npos) {
        return false;
    }
    const auto& names = callVariables();
    const std::string name = word.substr(0, equals);
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        return false;
    }
    call.environment.emplace_back(name, word.substr(equals + 1));
    return true;
}

bool isInput(const Word& word) { return !word.quoted && word.text.starts_with(kInputMark); }

}  // namespace

const std::string* Call::env(std::string_view name) const {
    for (const auto& [key, value] : environment) {
        if (key == name) {
            return &value;
        }
    }
    return nullptr;
}

const std::vector<std::string>& callVariables() {
    static const std::vector<std::string> names = {
        "ALLOW_WEAK_PASSWORDS", "LANG",         "MYSQL_PWD",
        "NO_CHECK_COMPONENTS",  "PGPASSWORD",   "PGUSER",
        "QRD_CRYPTED_PASSWORD", "QRD_PASSWORD", "ZELVO_SUID"};
    return names;
}

std::string formatCall(const Call& call) {
    std::string line;
    for (const auto& [name, value] : call.environment) {
        line += name + "=" + quoteWord(value) + " ";
    }
    line += quoteWord(call.utility);
    for (const auto& argument : call.arguments) {
        line += " " + quoteWord(argument);
    }
    if (!call.input.empty()) {
        line += ' ';
        line += kInputMark;
        line += quoteWord(call.input);
    }
    return line;
}

Call parseCall(std::string_view line) {
    std::vector<Word> words = splitWords(line);
    Call call;
    if (!words.empty() && isInput(words.back())) {
        call.input = words.back().text.substr(kInputMark.size());
        words.pop_back();
    }
    auto word = words.begin();
    while (word != words.end() && readVariable(word->text, call)) {
        ++word;
    }
    if (word == words.end()) {
        throw std::runtime_error("the line names no utility");
    }
    call.utility = word->text;
    for (++word; word != words.end(); ++word) {
        call.arguments.push_back(word->text);
    }
    std::sort(call.environment.begin(), call.environment.end());
    return call;
}

}  // namespace sandbox
