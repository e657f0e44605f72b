// The pieces of the deployers that have many cases in little code.

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>
#include <tuple>
#include <utility>
#include <vector>

#include "deploying.h"
#include "report/error_functions.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/list_operator.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/passwd.h"

using namespace zelvo;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

// Catches: a white list entry that lets through more or less than its owner wrote.
TEST(AddressPatterns, AreWhatTheSpamFilterWants) {
    // Entries, each with its patterns.
    for (const std::string row :
         {"bob@example.com bob@example.com", "*@a**b *@a**b", "* *@*", "*** *@*", "bob bob@*",
          "a*b a*@*b", "a?b a@b", "a*b?c a*@*b?c a*b@c", "?a?* ?a@* ?a?*@*", "**a** *@*a* *a*@*",
          "bob? *@bob?", "?bob ?bob@*", "? ?@*", ""}) {
        std::istringstream words(row);
        std::string entry;
        words >> entry;
        const std::vector<std::string> patterns(std::istream_iterator<std::string>(words), {});
        RecordingLog log;
        EXPECT_EQ(toAddressPatterns(entry), patterns);
        std::vector<std::string> told;
        for (const std::string& pattern : patterns) {
            if (pattern != entry) {
                told.push_back("Convert template '" + entry + "' to '" + pattern + "'");
            }
        }
        EXPECT_EQ(log.lines, told);
    }
}

TEST(ListOperator, TakesTheNodesOfItsActionWord) {
    const test::Element root(
        "<list><i>a</i><i deployer-action='create'>b</i>"
        "<i deployer-action='delete'>c</i><i/><i>d</i></list>");
    const XmlNode list(root);
    tDeployDocAbility::doc_ = list.doc();
    const std::pair<const char*, const char*> kRows[] = {
        {"", "a,b,d"}, {"create", "a,b,d"}, {"delete", "c"}, {"update", ""}};
    for (const auto& [word, expected] : kRows) {
        std::string text;
        foreach_xmlnode(tXPathExpr(list.doc(), "i", list.node()),
                        tPeriodSeparatedListOperator(text, word), deploy_error_func);
        EXPECT_EQ(text, expected) << word;
    }
}

// Catches: an option that is sent though it must not be, or not sent, or with another value.
TEST(OptionRules, MakeTheValueOrNone) {
    const test::Element node(
        "<e yes='true' no='false' odd='True' nil=''><p encoded='true'>Yg==</p>"
        "<p>Yg==</p><i>a</i><i/><i>ä c</i></e>");
    const std::pair<OptionRule, std::vector<std::pair<const char*, const char*>>> kRows[] = {
        {ifThere, {{"@nil", ""}, {"@none", nullptr}}},
        {always, {{"@none", ""}, {"i", "a"}}},
        {ifSet, {{"@nil", nullptr}, {"@no", "false"}}},
        {decoded, {{"p", "b"}, {"p[2]", "Yg=="}, {"q", nullptr}}},
        {upperCase, {{"i[3]", "ä C"}}},
        {joined, {{"i", "a,ä c"}, {"q", ""}}},
        {trueOrFalse, {{"@yes", "true"}, {"@odd", "false"}, {"@none", "false"}}},
        {falseOrTrue, {{"@no", "false"}, {"@nil", "true"}, {"@none", "true"}}},
        {trueIf, {{"@nil", "true"}, {"@yes='x'", nullptr}}},
        {falseIf, {{"@yes='true'", "false"}, {"@none", nullptr}}}};
    for (const auto& [rule, items] : kRows) {
        for (const auto& [item, expected] : items) {
            EXPECT_EQ(rule(node, item).value_or("none"), expected ? expected : "none") << item;
        }
    }
}

// Catches: settings that reach only one of the two places.
TEST(ScriptingOptions, GoToTheCommandAndToTheList) {
    const test::Element node("<scripting fp='true' php='true' unknown='x'/>");
    ExecCmd cmd("site");
    tDeployDocAbility::NamedValues list;
    tDeployDocAbility().getScriptingOpts(node, false, cmd, list);
    EXPECT_THAT(list, ElementsAre(Pair("php", "true"), Pair("fp", "true")));
    EXPECT_EQ(cmd.getString(), "site -php true -fp true");
}

TEST(EncryptedPassword, KeepsItsTypeWhenItIsReplaced) {
    const RecordingLog log;
    passwd password;
    password.type = passwd::ENCRYPTED;
    EXPECT_EQ(ensureNoEncryptedPassword(password, "").type, passwd::ENCRYPTED);
}

TEST(StrongPassword, HoldsEveryKindOfCharacter) {
    EXPECT_EQ(randomStrongPassword(0), "");
    EXPECT_EQ(randomStrongPassword(-1), "");
    const std::string password = randomStrongPassword(16);
    EXPECT_EQ(password.size(), 16U);
    const auto count = [&password](int (*kind)(int)) {
        return std::count_if(password.begin(), password.end(), kind);
    };
    EXPECT_EQ(count(isdigit), 6);
    EXPECT_EQ(count(isupper), 5);
    EXPECT_EQ(count(islower), 5);
}

// Catches: a secret that follows from the time at which the run began.
TEST(StrongPassword, OfTheSystemsGeneratorIsNotToBeGuessed) {
    const auto password = [] {
        srand(1);
        return randomStrongPassword(16, systemRandom);
    };
    EXPECT_NE(password(), password());
}

}  // namespace
