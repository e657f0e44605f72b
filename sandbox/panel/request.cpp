#include "panel/request.h"

#include <algorithm>

#include "words.h"

namespace sandbox {

namespace {

bool looksLikeOption(const std::string& word) {
    return word.size() > 1 && word[0] == '-' && word[1] != '-';
}

std::string passwordKind(const Call& call) {
    if (call.env("QRD_CRYPTED_PASSWORD") != nullptr) {
        return "encrypted";
    }
    if (call.env("QRD_PASSWORD") != nullptr) {
        return "plain";
    }
    throw Refusal("-passwd is given, but neither QRD_PASSWORD nor QRD_CRYPTED_PASSWORD is set");
}

}  // namespace

Request::Request(const Call& from, const Command& as) : call(from), command(as) {
    auto word = from.arguments.begin();
    const auto end = from.arguments.end();
    if (command.shape == Shape::kBare) {
        return;
    }
    if (command.shape != Shape::kAlone) {
        ++word;
    }
    if (command.shape != Shape::kOptions) {
        if (word == end || word->empty()) {
            throw Refusal(std::string(command.word) + " needs a name");
        }
        name = *word++;
    }
    if (command.shape == Shape::kWords) {
        words.assign(word, end);
    } else {
        readOptions(word, end);
    }
}

void Request::readOptions(Words word, Words end) {
    while (word != end) {
        const std::string& option = *word++;
        if (!looksLikeOption(option)) {
            throw Refusal("unexpected argument " + quoteWord(option));
        }
        if (holdsWord(command.valueless, std::string_view(option).substr(1))) {
            addOption(option, "true");
        } else if (word == end) {
            throw Refusal("option " + option + " needs a value");
        } else {
            addOption(option, *word++);
        }
    }
}

void Request::addOption(const std::string& option, const std::string& value) {
    if (option == "-passwd") {
        if (!value.empty()) {
            throw Refusal("a password must not stand in the arguments");
        }
        options.emplace_back("passwd", passwordKind(call));
    } else if (option == "-fppasswd") {
        options.emplace_back("fppasswd", "plain");
    } else {
        options.emplace_back(option.substr(1), value);
    }
}

const std::string* Request::option(std::string_view wanted) const {
    const std::string* found = nullptr;
    for (const auto& [key, value] : options) {
        if (key == wanted) {
            found = &value;
        }
    }
    return found;
}

const std::string& Request::neededOption(std::string_view wanted) const {
    if (const std::string* value = option(wanted)) {
        return *value;
    }
    throw Refusal(std::string(command.word) + " needs -" + std::string(wanted));
}

bool holdsWord(std::string_view text, std::string_view word) {
    while (!text.empty()) {
        const std::string_view first = text.substr(0, text.find(' '));
        if (first == word) {
            return true;
        }
        text.remove_prefix(std::min(first.size() + 1, text.size()));
    }
    return false;
}

}  // namespace sandbox
