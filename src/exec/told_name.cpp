#include "exec/told_name.h"

#include <algorithm>

namespace zelvo {

namespace {

constexpr std::string_view kLetters = "abfnrtv";
constexpr std::string_view kMeanings = "\a\b\f\n\r\t\v";
constexpr std::size_t kDigits = 3;

bool isOctal(char c) { return c >= '0' && c <= '7'; }

// Appends what an escape stands for. rest: behind its backslash. Returns how much of it that took.
std::size_t appendEscape(std::string& name, std::string_view rest) {
    if (rest.size() >= kDigits && std::all_of(rest.begin(), rest.begin() + kDigits, isOctal)) {
        name += static_cast<char>(std::stoi(std::string(rest.substr(0, kDigits)), nullptr, 8));
        return kDigits;
    }
    if (rest.empty()) {
        name += '\\';
        return 0;
    }
    const std::size_t letter = kLetters.find(rest.front());
    name += letter == std::string_view::npos ? rest.front() : kMeanings[letter];
    return 1;
}

}  // namespace

std::string nameOfTold(std::string_view told) {
    std::string name;
    while (!told.empty()) {
        const bool isEscape = told.front() == '\\';
        if (!isEscape) {
            name += told.front();
        }
        told.remove_prefix(1);
        if (isEscape) {
            told.remove_prefix(appendEscape(name, told));
        }
    }
    return name;
}

std::vector<std::string> namesOfListing(std::string_view told) {
    constexpr std::string_view kLineEnds = "\n\r";
    std::vector<std::string> names;
    std::size_t start = told.find_first_not_of(kLineEnds);
    while (start != std::string_view::npos) {
        const std::size_t end = std::min(told.find_first_of(kLineEnds, start), told.size());
        names.push_back(nameOfTold(told.substr(start, end - start)));
        start = told.find_first_not_of(kLineEnds, end);
    }
    return names;
}

}  // namespace zelvo
