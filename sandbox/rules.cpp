#include "rules.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <stdexcept>

#include "words.h"

namespace sandbox {

namespace {

long toNumber(std::string_view text) {
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::runtime_error("'" + std::string(text) + "' is no number");
    }
    return value;
}

// The head ends with the first word that ends in ":" outside quotes.
std::vector<Word> takeHead(std::vector<Word>& words) {
    const auto last = std::find_if(words.begin(), words.end(), [](const Word& word) {
        return !word.endsQuoted && word.text.ends_with(':');
    });
    if (last == words.end()) {
        throw std::runtime_error("no ':' behind the condition");
    }
    last->text.pop_back();
    std::vector<Word> head(words.begin(), last + 1);
    if (head.back().text.empty() && !head.back().quoted) {
        head.pop_back();
    }
    words.erase(words.begin(), last + 1);
    return head;
}

void readNumbered(const std::vector<Word>& head, Rule& rule) {
    if (head.size() != 2) {
        throw std::runtime_error("one number belongs here");
    }
    std::string_view text = head[1].text;
    rule.counted = true;
    rule.onwards = text.ends_with('+');
    if (rule.onwards) {
        text.remove_suffix(1);
    }
    rule.number = toNumber(text);
}

void readWords(const std::vector<Word>& head, Rule& rule) {
    if (head.size() < 2) {
        throw std::runtime_error("'match' needs a utility");
    }
    for (auto word = head.begin() + 1; word != head.end(); ++word) {
        const bool any = !word->quoted && word->text == "*";
        rule.words.push_back(any ? std::nullopt : std::optional(word->text));
    }
}

void addAction(const std::vector<std::string>& words, Rule& rule) {
    if (words.empty()) {
        return;
    }
    if (words.size() > 2) {
        throw std::runtime_error("'" + words[0] + "' takes one word");
    }
    rule.actions.push_back({words[0], words.size() == 2 ? words[1] : std::string()});
}

void readActions(const std::vector<Word>& words, Rule& rule) {
    std::vector<std::string> action;
    for (const Word& word : words) {
        if (word.text == ";" && !word.quoted) {
            addAction(action, rule);
            action.clear();
        } else {
            action.push_back(word.text);
        }
    }
    addAction(action, rule);
    if (rule.actions.empty()) {
        throw std::runtime_error("the rule has no action");
    }
}

Rule parseRule(std::vector<Word> words, std::string_view counter) {
    Rule rule;
    const std::vector<Word> head = takeHead(words);
    if (head.empty()) {
        throw std::runtime_error("the rule has no condition");
    }
    if (head[0].text == counter) {
        readNumbered(head, rule);
    } else if (head[0].text == "match") {
        readWords(head, rule);
    } else {
        throw std::runtime_error("unknown condition '" + head[0].text + "'");
    }
    readActions(words, rule);
    return rule;
}

}  // namespace

long Action::number() const { return toNumber(value); }

bool Rule::has(std::string_view action) const {
    return std::any_of(actions.begin(), actions.end(),
                       [&](const Action& each) { return each.name == action; });
}

bool Rule::fits(long callNumber, const std::vector<std::string>& callWords) const {
    if (counted) {
        return onwards ? callNumber >= number : callNumber == number;
    }
    if (words.size() > callWords.size()) {
        return false;
    }
    return std::equal(words.begin(), words.end(), callWords.begin(),
                      [](const std::optional<std::string>& wanted, const std::string& word) {
                          return !wanted || *wanted == word;
                      });
}

std::vector<Rule> parseRules(std::string_view text, std::string_view counter) {
    std::vector<Rule> rules;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        try {
            std::vector<Word> words = splitWords(line);
            if (!words.empty()) {
                rules.push_back(parseRule(std::move(words), counter));
            }
        } catch (const std::runtime_error& e) {
            throw std::runtime_error("bad fault rule '" + std::string(line) + "': " + e.what());
        }
    }
    return rules;
}

const Rule* findRule(const std::vector<Rule>& rules, long callNumber,
                     const std::vector<std::string>& callWords) {
    for (const Rule& rule : rules) {
        if (rule.fits(callNumber, callWords)) {
            return &rule;
        }
    }
    return nullptr;
}

int signalNumber(const std::string& name) {
    struct Named {
        std::string_view name;
        int number;
    };
    constexpr Named kSignals[] = {{"TERM", SIGTERM}, {"INT", SIGINT},   {"HUP", SIGHUP},
                                  {"KILL", SIGKILL}, {"SEGV", SIGSEGV}, {"ABRT", SIGABRT},
                                  {"PIPE", SIGPIPE}, {"STOP", SIGSTOP}, {"CONT", SIGCONT},
                                  {"USR1", SIGUSR1}, {"USR2", SIGUSR2}, {"QUIT", SIGQUIT}};
    const std::string_view bare =
        name.starts_with("SIG") ? std::string_view(name).substr(3) : std::string_view(name);
    for (const Named& signal : kSignals) {
        if (signal.name == bare) {
            return signal.number;
        }
    }
    return static_cast<int>(toNumber(bare));
}

}  // namespace sandbox
