// The texts of the sandbox: what is written must be read back as it was, or a test would compare a
// journal that lies.

#include "words.h"

#include <gtest/gtest.h>

#include <random>

#include "call.h"
#include "rules.h"

namespace {

using namespace sandbox;

std::string randomText(std::mt19937& random) {
    constexpr std::string_view kBytes = "a0'\"\\ \n\t;#=\xc3\xa9\x7f-*:\x01";
    constexpr std::string_view kWords[] = {"<<<", "\xe2\x82\xac", "\xed\xa0\x80", "LANG="};
    std::string text;
    for (auto size = random() % 8; size > 0; --size) {
        text += random() % 5 == 0 ? kWords[random() % std::size(kWords)]
                                  : kBytes.substr(random() % kBytes.size(), 1);
    }
    return text;
}

// Catches: an escape that is written and not read, a word that seems bare and is split, an argument
// taken for an assignment or for the input.
TEST(CallLine, HoldsEveryCallAndIsReadBackAsItWas) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        Call call;
        call.utility = "client";
        for (auto count = random() % 5; count > 0; --count) {
            call.arguments.push_back(randomText(random));
        }
        if (random() % 2 == 0) {
            call.environment.emplace_back("QRD_PASSWORD", randomText(random));
        }
        call.input = randomText(random);
        const std::string line = formatCall(call);
        ASSERT_EQ(line.find('\n'), std::string::npos);
        const Call again = parseCall(line);
        ASSERT_EQ(again.arguments, call.arguments) << line;
        ASSERT_EQ(again.environment, call.environment) << line;
        ASSERT_EQ(again.input, call.input) << line;
    }
}

TEST(CallLine, QuotesOnlyWhatIsNotPlain) {
    EXPECT_EQ(quoteWord("a.b@c-1:2/%+,="), "a.b@c-1:2/%+,=");
    EXPECT_EQ(quoteWord("Zoë"), "Zoë");
    EXPECT_EQ(quoteWord(""), "''");
    EXPECT_EQ(quoteWord("it's\n\x01"), "'it\\'s\\n\\x01'");
    EXPECT_EQ(quoteWord("\xff"), "'\\xff'");
    EXPECT_EQ(quoteWord("\xc0\xaf"), "'\\xc0\\xaf'");  // overlong
}

// Catches: a rule that fits too much or too little, so that a fault test would pass without its
// fault.
TEST(FaultRules, FitTheirCallsOnly) {
    const auto rules = parseRules(
        "# a comment\n"
        "call 3: exit 1\n"
        "call 7+: exit 2\n"
        "match client --update * -status: exit 3\n"
        "match client --create '*': exit 4\n"
        "match domain --create 'a b': exit 5\n"
        "match mail --create '': exit 6\n",
        "call");
    const auto status = [&](long number, const std::vector<std::string>& words) {
        const Rule* rule = findRule(rules, number, words);
        return rule != nullptr ? rule->actions.at(0).number() : 0;
    };
    EXPECT_EQ(status(2, {"x"}), 0);
    EXPECT_EQ(status(3, {"x"}), 1);
    EXPECT_EQ(status(4, {"x"}), 0);
    EXPECT_EQ(status(7, {"x"}), 2);
    EXPECT_EQ(status(8, {"x"}), 2);
    EXPECT_EQ(status(1, {"client", "--update", "bob", "-status", "enabled"}), 3);
    EXPECT_EQ(status(1, {"client", "--update", "bob"}), 0);
    EXPECT_EQ(status(1, {"client", "--create", "bob"}), 0);
    EXPECT_EQ(status(1, {"client", "--create", "*"}), 4);
    EXPECT_EQ(status(1, {"domain", "--create", "a b", "-owner"}), 5);
    EXPECT_EQ(status(1, {"domain", "--create", "a"}), 0);
    EXPECT_EQ(status(1, {"mail", "--create", "bob"}), 0);
    EXPECT_EQ(status(1, {"mail", "--create", ""}), 6);
}

TEST(FaultRules, AreRefusedWhenTheySayNothing) {
    for (const char* text : {"call 1", "call x: exit 1", "match: exit 1", "match a:",
                             "when a: exit 1", "call 1: exit 1 2", "match 'a: exit 1"}) {
        EXPECT_THROW(parseRules(text, "call"), std::runtime_error) << text;
    }
}

}  // namespace
