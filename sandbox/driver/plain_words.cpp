#include "plain_words.h"

#include <algorithm>
#include <cctype>

namespace {

struct Place {
    const char* before;              // the random word stands behind this,
    std::vector<std::size_t> sizes;  // has one of these sizes,
    std::size_t shortestStem;        // and ends a name that begins with so much
    std::size_t longestStem;
};

constexpr std::size_t kAny = 100;
const Place kPlaces[] = {{"QRD_PASSWORD=", {7, 16}, 0, 0},
                         {"QRD_CRYPTED_PASSWORD=", {7}, 0, 0},
                         {" -fppasswd ", {7}, 0, 0},
                         {" backup_", {7}, 0, 0},
                         {"/opt/qrd/RMK/tmp/", {6}, 0, kAny},
                         {"/migration.", {6}, 1, kAny},
                         // A random word that nothing parts from what it follows.
                         {"/RMK/tmp/cert.", {9}, 0, 0},
                         {"/RMK/tmp/sso.idp.", {9}, 0, 0}};

bool isWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

// The characters of a name from there on.
std::string nameAt(const std::string& text, std::size_t at) {
    const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
                                      [](char c) { return isWord(c) || c == '-' || c == '_'; });
    return {text.begin() + static_cast<std::ptrdiff_t>(at), end};
}

std::string replaceWord(std::string text, const std::string& word, const std::string& plain) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos;) {
        const std::size_t end = at + word.size();
        const bool isWhole =
            (at == 0 || !isWord(text[at - 1])) && (end == text.size() || !isWord(text[end]));
        if (isWhole) text.replace(at, word.size(), plain);
        at += isWhole ? plain.size() : 1;
    }
    return text;
}

}  // namespace

PlainWords::PlainWords(const std::string& journal, const std::string& result,
                       const std::string& log) {
    for (const std::string* text : {&journal, &result, &log}) learn(*text);
}

void PlainWords::learn(const std::string& text) {
    std::vector<std::pair<std::size_t, std::pair<std::string, std::string>>> found;
    for (const Place& place : kPlaces) {
        const std::string before = place.before;
        for (auto at = text.find(before); at != std::string::npos; at = text.find(before, at + 1)) {
            const std::string name = nameAt(text, at + before.size());
            for (const std::size_t size : place.sizes) {
                if (name.size() < size + place.shortestStem ||
                    name.size() > size + place.longestStem) {
                    continue;
                }
                const std::string stem = name.substr(0, name.size() - size);
                const std::string word = name.substr(stem.size());
                if (std::all_of(word.begin(), word.end(), isWord) && word != "XXXXXX") {
                    found.push_back({at, {name, stem}});
                }
            }
        }
    }
    std::sort(found.begin(), found.end());
    for (const auto& [at, word] : found) {
        const auto& [name, stem] = word;
        const auto isKnown = [&name = name](const auto& one) { return one.first == name; };
        if (std::none_of(words_.begin(), words_.end(), isKnown)) {
            words_.emplace_back(name, stem + "RANDOM" + std::to_string(words_.size() + 1));
        }
    }
}

std::string PlainWords::in(std::string text) const {
    for (const auto& [word, plain] : words_) text = replaceWord(std::move(text), word, plain);
    return text;
}
