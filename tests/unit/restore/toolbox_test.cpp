// The pieces of the deployers that have many cases in little code.

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <tuple>

#include "recording_log.h"
#include "report/error_functions.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/list_operator.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/passwd.h"
#include "xml/xml_document.h"

using namespace zelvo;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

// Catches: a white list entry that lets through more or less than its owner wrote.
TEST(AddressPattern, IsWhatTheSpamFilterWants) {
    const std::pair<const char*, const char*> kRows[] = {{"bob@example.com", "bob@example.com"},
                                                         {"*@a*b", "*@a*b"},
                                                         {"*", "*@*"},
                                                         {"***", "*@*"},
                                                         {"a*b", "a@b"},
                                                         {"a?b", "a@b"},
                                                         {"a*b?c", "a*b@c"},
                                                         {"**example", "*example@*"},
                                                         {"bob*", "*@bob*"},
                                                         {"bob?", "*@bob?"},
                                                         {"?bob", "?bob@*"},
                                                         {"", ""}};
    for (const auto& [entry, pattern] : kRows) {
        RecordingLog log;
        EXPECT_EQ(toAddressPattern(entry), pattern);
        if (std::string(entry) == pattern) {
            EXPECT_THAT(log.lines, IsEmpty());
        } else {
            EXPECT_THAT(log.lines, ElementsAre("Convert template '" + std::string(entry) +
                                               "' to '" + pattern + "'"));
        }
    }
}

TEST(ListOperator, TakesTheNodesOfItsActionWord) {
    tXmlRmkDocument dump(
        std::string("<list><i>a</i><i deployer-action='create'>b</i>"
                    "<i deployer-action='delete'>c</i><i/><i>d</i></list>"));
    dump.initFileDoc("list");
    tDeployDocAbility::doc_ = dump.doc();
    const std::pair<const char*, const char*> kRows[] = {
        {"", "a,b,d"}, {"create", "a,b,d"}, {"delete", "c"}, {"update", ""}};
    for (const auto& [word, expected] : kRows) {
        std::string list;
        foreach_xmlnode(tXPathExpr(dump.doc(), "i", dump.root()),
                        tPeriodSeparatedListOperator(list, word), deploy_error_func);
        EXPECT_EQ(list, expected) << word;
    }
}

// Catches: an option that is sent though it must not be, or not sent, or with another value.
TEST(OptionRules, MakeTheValueOrNone) {
    tXmlRmkDocument dump(
        std::string("<e yes='true' no='false' odd='True' nil=''><p encoded='true'>Yg==</p>"
                    "<p>Yg==</p><i>a</i><i/><i>ä c</i></e>"));
    dump.initFileDoc("e");
    const XmlNode node(dump.doc(), dump.root());
    const std::tuple<OptionRule, const char*, const char*> kRows[] = {
        {ifThere, "@nil", ""},
        {ifThere, "@none", nullptr},
        {always, "@none", ""},
        {always, "i", "a"},
        {ifSet, "@nil", nullptr},
        {ifSet, "@no", "false"},
        {decoded, "p", "b"},
        {decoded, "p[2]", "Yg=="},
        {decoded, "q", nullptr},
        {upperCase, "i[3]", "ä C"},
        {joined, "i", "a,,ä c"},
        {joined, "q", ""},
        {trueOrFalse, "@yes", "true"},
        {trueOrFalse, "@odd", "false"},
        {trueOrFalse, "@none", "false"},
        {falseOrTrue, "@no", "false"},
        {falseOrTrue, "@nil", "true"},
        {falseOrTrue, "@none", "true"},
        {trueIf, "@nil", "true"},
        {trueIf, "@yes='x'", nullptr},
        {falseIf, "@yes='true'", "false"},
        {falseIf, "@none", nullptr}};
    for (const auto& [rule, item, expected] : kRows) {
        const auto value = rule(node, item);
        EXPECT_EQ(value.value_or("none"), expected ? expected : "none") << item;
    }
}

// Catches: a handler that the panel does not know, options that reach only one of the two places.
TEST(ScriptingOptions, GoToTheCommandAndToTheList) {
    RecordingLog log;
    tXmlRmkDocument dump(std::string(
        "<scripting fp='true' php_handler_type='isapi' php='true' unknown='x' ssi_html='false'/>"));
    dump.initFileDoc("scripting");
    ExecCmd cmd("site");
    tDeployDocAbility::NamedValues list;
    tDeployDocAbility().getScriptingOpts(XmlNode(dump.doc(), dump.root()), false, cmd, list);
    EXPECT_THAT(list, ElementsAre(Pair("php_handler_type", "module"), Pair("ssi_html", "false"),
                                  Pair("php", "true"), Pair("fp", "true")));
    EXPECT_EQ(cmd.getString(), "site -php_handler_type module -ssi_html false -php true -fp true");
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

TEST(EncryptedPassword, KeepsItsTypeWhenItIsReplaced) {
    RecordingLog log;
    passwd password;
    password.type = passwd::ENCRYPTED;
    password.value = "$1$hash";
    const passwd replaced = ensureNoEncryptedPassword(password, "Frontpage user bob");
    EXPECT_EQ(replaced.type, passwd::ENCRYPTED);
    EXPECT_EQ(replaced.value.size(), 7U);
    EXPECT_THAT(log.lines,
                ElementsAre("No encrypted passwords are allowed for Frontpage user bob. New "
                            "password will be generated and sent by mail to the respective user."));
}

}  // namespace
