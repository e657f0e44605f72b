#include "request.h"

#include "panel.h"
#include "words.h"

namespace sandbox {
namespace {

bool looksLikeOption(const std::string& word) {
    return word.size() > 1 && word[0] == '-' && word[1] != '-';
}

bool takesNoValue(const std::string& word) { return word == "-force"; }

std::string passwordKind(const Call& call) {
    if (call.env("QRD_CRYPTED_PASSWORD") != nullptr) return "encrypted";
    if (call.env("QRD_PASSWORD") != nullptr) return "plain";
    throw Refusal("-passwd is given, but neither QRD_PASSWORD nor QRD_CRYPTED_PASSWORD is set");
}

}  // namespace

Request::Request(const Call& from, Shape shape) : call(from) {
    auto word = from.arguments.begin();
    const auto end = from.arguments.end();
    if (word == end) throw Refusal("no command is given");
    command = *word++;
    if (shape == Shape::kName) {
        if (word == end || word->empty()) throw Refusal(command + " needs a name");
        name = *word++;
    }
    while (word != end) {
        const std::string& option = *word++;
        if (!looksLikeOption(option)) throw Refusal("unexpected argument " + quoteWord(option));
        if (takesNoValue(option)) {
            addOption(option, "true");
        } else if (word == end) {
            throw Refusal("option " + option + " needs a value");
        } else {
            addOption(option, *word++);
        }
    }
}

void Request::addOption(const std::string& word, const std::string& value) {
    if (word == "-passwd") {
        if (!value.empty()) throw Refusal("a password must not stand in the arguments");
        options.emplace_back("passwd", passwordKind(call));
    } else if (word == "-fppasswd") {
        options.emplace_back("fppasswd", "plain");
    } else {
        options.emplace_back(word.substr(1), value);
    }
}

const std::string* Request::option(std::string_view wanted) const {
    const std::string* found = nullptr;
    for (const auto& [key, value] : options) {
        if (key == wanted) found = &value;
    }
    return found;
}

}  // namespace sandbox
