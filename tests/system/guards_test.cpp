// Every guard of a restore: the example company with one failing command at a time, each command
// of its journal in turn. What must be told of it, and what must still be run, is worked out from
// the failing command alone.

#include "outline.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <map>
#include <stdexcept>

namespace {

constexpr int kShards = 4;

// How far a failed command reaches, beyond being told.
enum class Reach {
    kItself,
    kAccount,     // what the account itself has left is lost
    kDomain,      // what the domain has left is lost
    kContents,    // the same, but it still gets its status and its expiration
    kLimits,      // each limit is tried alone
    kDomainUser,  // each part is tried alone
    kParent,      // the object whose owner was asked for is not begun
    kAddresses,   // no address gets a default domain
};
using enum Reach;

enum class Place { kNowhere, kDebugLog, kObject, kTop };

struct Rule {
    const char* call;
    Reach reach;
    Place place;  // where it is told
    std::string codes;
};

const std::string kFailed = "ExecCmd::Failed";
const std::string kClient = "FailedClientDeployment > ExecCmd::Failed";
const std::string kDomainCodes = "FailedDomainDeployment > ExecCmd::Failed";

// The first row that fits counts.
const Rule kRules[] = {
    {"(client|reseller) --(create|remove|change-owner|convert-to-\\w+) .*", kAccount,
     Place::kObject, kClient},
    {"(client|reseller) --update \\S+ -login .*", kAccount, Place::kObject, kClient},
    {"(\\w+_pref|domadmin) --update \\S+ -skin .*", kItself, Place::kDebugLog, ""},
    {"(client|reseller)(_pref)? --update .*", kItself, Place::kObject, kFailed},
    {"(ip_pool --add|traffic --add-batch(-user)?) .*", kItself, Place::kObject, kFailed},
    {"domain --(create|remove|change-owner) .*", kDomain, Place::kObject, kDomainCodes},
    {"domain --update \\S+ -guid \\S+ -c.*", kDomain, Place::kObject, kDomainCodes},
    {"domain --update \\S+ -guid \\S+", kItself, Place::kObject, kFailed},
    {"domain --update \\S+ -status .*", kItself, Place::kNowhere, ""},
    {"domain_pref --update \\S+ -(www|expiration) \\S+", kContents, Place::kObject,
     kDomainCodes},
    {"domain_pref --update .*", kLimits, Place::kObject, kFailed},
    {"domadmin --update .*", kDomainUser, Place::kObject, kFailed},
    {"objectInfo --getinfo .*", kParent, Place::kTop, "UnknownParentClassObject"},
    {"correct_aw_statistics.pl|domain_pref -d .*", kItself, Place::kTop, kFailed},
    {"ipmanage -xi", kAddresses, Place::kTop, "AssertionFailed"},
};

// Under which account an object stands in the example; what is not here stands at the top.
const std::map<std::string, std::string> kParents = {
    {"boreal.example", "boreal"},     {"knizhny-dom", "boreal"},
    {"knigi.example", "knizhny-dom"}, {"пекарня.example", "knizhny-dom"},
    {"cedar-books", "boreal"},        {"cedarbooks.example", "cedar-books"},
    {"meridian.example", "meridian"}, {"al-noor", "meridian"},
    {"alnoor.example", "al-noor"},    {"mingtea.example", "ming-tea"},
    {"old-tea.example", "ming-tea"},  {"notes.example", "shared-shelf"},
};

// The one domain with hosting, which is reported as not supported behind this call, and with an
// address that it shall answer for.
const std::string kHosted = "boreal.example";
const std::string kBeforeHosting = "domain_pref --update boreal.example -www true";
// Of knizhny-dom, who owns events.example below the root.
const std::string kOwnerOfEvents = "3f0c9a52-0011-4a6e-9c1d-5b7e00000011";
const std::string kPanelEnvironment = "ALLOW_WEAK_PASSWORDS='' LANG=en_US.UTF-8 ";

std::string parentOf(const std::string& name) {
    const auto found = kParents.find(name);
    return found == kParents.end() ? "" : found->second;
}

std::string placeOf(const std::string& name) {
    if (name.empty()) return "";
    const bool isReseller = name == "boreal" || name == "meridian";
    const std::string above = placeOf(parentOf(name));
    const std::string type = name.ends_with(".example") ? "domain "
                             : isReseller               ? "reseller "
                                                        : "client ";
    // The document has no encoding, so it holds other scripts as character references.
    return above + (above.empty() ? "" : "/") + type +
           std::regex_replace(name, std::regex("пекарня"),
                              "&#x43F;&#x435;&#x43A;&#x430;&#x440;&#x43D;&#x44F;");
}

struct Call {
    explicit Call(const std::string& journalLine)
        : line(journalLine), bare(bareCall(line)), environment(line, 0, line.size() - bare.size()) {
        static const std::regex word(R"('(?:\\.|[^'\\])*'|[^ ]+)");
        words.assign(std::sregex_token_iterator(bare.begin(), bare.end(), word), {});
        rule = std::find_if(std::begin(kRules), std::end(kRules), [this](const Rule& each) {
            return std::regex_match(bare, std::regex(each.call));
        });
        if (rule == std::end(kRules)) throw std::runtime_error("no rule fits " + bare);
        if (words.size() > 2 && rule->place != Place::kTop) {
            object = words[0] == "ip_pool" ? words.back() : words[2];
        }
    }
    bool isFor(const std::string& name) const { return object == name; }
    bool setsDefaultDomain() const {
        return rule->reach == kAddresses || (words.size() > 1 && words[1] == "-d");
    }
    std::string head() const {
        std::string text;
        for (std::size_t i = 0; i < 3 && i < words.size(); ++i) text += (i ? " " : "") + words[i];
        return text;
    }

    std::string line;
    std::string bare;
    std::string environment;
    Lines words;
    std::string object;  // whose call it is; empty for the run's own
    const Rule* rule = nullptr;
};

using Calls = std::vector<Call>;

Calls callsIn(const Sandbox& box) {
    // The one random password holds still.
    static const std::regex random("QRD_PASSWORD=\\w{7} (domadmin --update events.example)");
    Calls calls;
    for (const std::string& line : box.journal()) {
        calls.emplace_back(std::regex_replace(line, random, "QRD_PASSWORD=* $1"));
    }
    return calls;
}

// The same options in several calls. A domain administrator's parts: the password, which alone
// needs its environment; rights and looks; the address, the name and each item of contact data;
// the country with what belongs to it.
Lines inParts(const Call& all) {
    static const std::regex starts("-email|-pname|-company|-city|-country|-locale");
    const bool isUser = all.rule->reach == kDomainUser;
    Lines calls;
    for (std::size_t i = 3; i + 1 < all.words.size(); i += 2) {
        if (!isUser || i <= 5 || std::regex_match(all.words[i], starts)) {
            calls.push_back((i == 3 ? all.environment : kPanelEnvironment) + all.head());
        }
        calls.back() += " " + all.words[i] + " " + all.words[i + 1];
    }
    return calls;
}

// What a domain that failed late still gets.
Lines lastWishes(const Calls& calls, const std::string& domain) {
    Lines wishes;
    for (const std::string& start : {"domain --update " + domain + " -status ",
                                     "domain_pref --update " + domain + " -expiration "}) {
        for (const Call& call : calls) {
            if (call.bare.starts_with(start)) wishes.push_back(call.line);
        }
    }
    return wishes;
}

// True when the later call is not made because the failed one took its ground away.
bool isLost(const Call& later, const Call& failed) {
    switch (failed.rule->reach) {
        case kAccount:
            return later.isFor(failed.object);
        case kDomain:
        case kContents:
            return later.isFor(failed.object) ||
                   (failed.isFor(kHosted) && later.setsDefaultDomain() &&
                    (failed.rule->reach == kDomain || failed.bare == kBeforeHosting));
        case kParent:
            return failed.words.back() == kOwnerOfEvents && later.isFor("events.example");
        case kAddresses:
            return later.setsDefaultDomain();
        default:
            return false;
    }
}

// One text, so that a difference can be seen.
std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

Lines expectedCalls(const Calls& calls, std::size_t index) {
    const Call& failed = calls[index];
    const Reach reach = failed.rule->reach;
    Lines expected;
    for (std::size_t i = 0; i <= index; ++i) expected.push_back(calls[i].line);
    const Lines instead = reach == kLimits || reach == kDomainUser ? inParts(failed)
                          : reach == kContents ? lastWishes(calls, failed.object)
                                               : Lines();
    expected.insert(expected.end(), instead.begin(), instead.end());
    for (std::size_t i = index + 1; i < calls.size(); ++i) {
        if (!isLost(calls[i], failed)) expected.push_back(calls[i].line);
    }
    return expected;
}

Lines expectedOutcome(const Calls& calls, std::size_t index) {
    const Call& failed = calls[index];
    const Rule& rule = *failed.rule;
    const auto lastBefore = std::find_if(
        calls.begin(), calls.end(), [](const Call& call) { return call.bare == kBeforeHosting; });
    const bool isBefore = static_cast<std::ptrdiff_t>(index) <= lastBefore - calls.begin();
    const bool endsHosted =
        failed.isFor(kHosted) && (rule.reach == kDomain || rule.reach == kContents);
    const std::string hosting = placeOf(kHosted) + ": NotSupportedOperation";
    const std::string place = rule.place == Place::kTop ? "" : placeOf(failed.object);
    Lines outcome{"success"};
    if (!isBefore) outcome.push_back(hosting);
    if (!rule.codes.empty()) outcome.push_back(place + ": " + rule.codes);
    if (isBefore && !endsHosted) outcome.push_back(hosting);
    return outcome;
}

// All domains count as done but the deleted one, which counts when its removal failed.
int expectedDomains(const Call& failed) {
    if (failed.rule->reach == kDomain && failed.words[1] == "--remove") return 12;
    const bool isUncounted = failed.rule->reach == kParent
                                 ? failed.words.back() == kOwnerOfEvents
                                 : failed.words[0] == "domain" &&
                                       failed.rule->place == Place::kObject &&
                                       failed.rule->reach == kItself;
    return isUncounted ? 10 : 11;
}

void expectTexts(const Sandbox& box) {
    for (const Told& told : outlineOf(box.resultText()).told) {
        if (told.codes.ends_with(kFailed)) {
            EXPECT_EQ(countOf(told.text, " failed with return code 3.\n"), 1);
            EXPECT_TRUE(told.text.ends_with("Stderr is\nno space\n")) << told.text;
        } else if (told.codes == "UnknownParentClassObject") {
            EXPECT_TRUE(told.text.ends_with(" ['no space\n'].")) << told.text;
        }
    }
}

Calls restoreExample(Sandbox& box, const std::string& faults) {
    box.withoutModel();
    box.writeDump(example("restore.xml"));
    box.faults(faults);
    box.succeeds(deployment());
    return callsIn(box);
}

class Guards : public ::testing::TestWithParam<int> {};

TEST_P(Guards, CostNoMoreThanTheirOwnPiece) {
    Sandbox undisturbed;
    const Calls calls = restoreExample(undisturbed, "");
    ASSERT_EQ(calls.size(), 114U);
    for (auto i = static_cast<std::size_t>(GetParam()); i < calls.size(); i += kShards) {
        const Call& failed = calls[i];
        const std::string number = std::to_string(i + 1);
        SCOPED_TRACE("call " + number + ": " + failed.bare);
        Sandbox box;
        Lines made;
        for (const Call& call :
             restoreExample(box, "call " + number + ": stderr 'no space\\n'; exit 3\n")) {
            made.push_back(call.line);
        }
        EXPECT_EQ(joined(made), joined(expectedCalls(calls, i)));
        EXPECT_EQ(outcomeOf(box), expectedOutcome(calls, i));
        expectTexts(box);
        EXPECT_EQ(countOf(box.logText(), "failed with return code 3.") > 0,
                  failed.rule->place == Place::kDebugLog || failed.rule->codes.ends_with(kFailed));
        EXPECT_EQ(attributeOf(box.statusText(), "completed-accounts"), "7");
        EXPECT_EQ(attributeOf(box.statusText(), "completed-domains"),
                  std::to_string(expectedDomains(failed)));
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, Guards, ::testing::Range(0, kShards));

}  // namespace
