// Dumps that mean harm, and utilities whose words do.

#include "outcome.h"
#include "scenario.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <algorithm>

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string repeat(const std::string& text, int times) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}

std::string client(const std::string& inside, const std::string& prolog = "") {
    return prolog + "<migration-dump><client name=\"bob\">" + inside + "</client></migration-dump>";
}

std::string traffic(const std::string& text, const std::string& declarations = "") {
    return client("<traffic>" + text + "</traffic>", "<!DOCTYPE m [" + declarations + "]>");
}

// Nine levels of ten: a billion words.
std::string laughs() {
    std::string entities = "<!ENTITY l0 \"lol\">";
    for (char level = '1'; level <= '9'; ++level) {
        const std::string below = std::string("&l") + static_cast<char>(level - 1) + ";";
        entities += std::string("<!ENTITY l") + level + " \"" + repeat(below, 10) + "\">";
    }
    return entities;
}

struct Hostile {
    std::string dump;
    std::string code;  // of the one failure; empty when the dump is as good as any
    std::string text;  // a part of what is told
};

const std::string kParse = "tError_ParseFile";
const std::string kFile = "SYSTEM \"file:///etc/passwd\">";

void expectNoHarm(const Hostile& row, bool checked) {
    Sandbox box;
    box.withoutModel();
    box.patience(std::chrono::seconds(30));
    box.writeDump(row.dump);
    const auto run = box.deploy(checked ? "" : "--skip-xsd");
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(isWhole(box.resultText()));
    if (row.code.empty()) {
        EXPECT_EQ(codesOf(box), Lines({"success"}));
    } else {
        EXPECT_EQ(codesOf(box), Lines({"error", ": " + row.code}));
        EXPECT_THAT(box.resultText(), HasSubstr(row.text));
        EXPECT_TRUE(box.journal().empty());
    }
    // What a file of the machine holds gets nowhere.
    EXPECT_THAT(box.readFile("journal") + box.resultText() + box.logText(),
                Not(HasSubstr("root:")));
}

TEST(Dumps, ThatMeanHarmAreToldToBeWrongAndDoNone) {
    const Hostile rows[] = {
        {traffic("&l9;", laughs()), kParse, "entity reference loop"},
        {client("<limit name=\"&l9;\"/>", "<!DOCTYPE m [" + laughs() + "]>"), kParse,
         "entity reference loop"},
        {traffic("&a;", "<!ENTITY a \"x&a;\">"), kParse, "entity reference loop"},
        // One large entity, named often: its references must be counted too.
        {client("<limit name=\"" + repeat("&b;", 3000) + "\"/>",
                "<!DOCTYPE m [<!ENTITY b \"" + std::string(100'000, 'b') + "\">]>"),
         kParse, "AttValue length too long"},
        {traffic("&x;", "<!ENTITY x " + kFile), kParse, "is refused"},
        {client("<limit name=\"&x;\"/>", "<!DOCTYPE m [<!ENTITY x " + kFile + "]>"), kParse,
         "external entity"},
        {client("", "<!DOCTYPE m [<!ENTITY % p " + kFile + " %p;]>"), kParse, "is refused"},
        {traffic("&y;", "<!ENTITY % p " + kFile + "<!ENTITY % q \"&#60;!ENTITY y '&#37;p;'>\">%q;"),
         kParse, ""},
        {client("", "<!DOCTYPE m SYSTEM \"http://127.0.0.1:8880/cligate.php\">"), "", ""},
        {"<migration-dump>" + repeat("<admin>", 100'000) + repeat("</admin>", 100'000) +
             "</migration-dump>",
         kParse, "Excessive depth"},
        {traffic("a\xFF\xFE"), kParse, "not proper UTF-8"},
        {client("", "<?xml version=\"1.0\" encoding=\"no-such\"?>"), kParse,
         "Unsupported encoding no-such"},
        {client("", "<?xml version=\"1.0\" encoding=\"UCS-4\"?>"), kParse, ""},
        {traffic("a" + std::string(1, '\0') + "b"), kParse, "parser"},
        {traffic("&#0;"), kParse, "invalid xmlChar value 0"},
        {traffic("]]>"), kParse, ""},
        {"<migration-dump><client name=\"bob\"><prop", kParse, "Premature end of data"},
        {client("<limit name=\"" + std::string(20'000'000, 'a') + "\"/>"), kParse,
         "AttValue length too long"},
        {traffic(std::string(20'000'000, 'a')), kParse, "huge text node"},
        {"", kParse, "Document is empty"},
        {"hello world", kParse, "Start tag expected"},
        {"<dump><client name=\"bob\"/></dump>", "tError_WrongDoc",
         "root node is &lt;dump&gt;, but &lt;migration-dump&gt; was expected"},
    };
    for (const Hostile& row : rows) {
        SCOPED_TRACE(row.dump.substr(0, 150));
        expectNoHarm(row, true);
        expectNoHarm(row, false);
    }
}

TEST(Dumps, ThatAreNoFilesAreNotRead) {
    for (const std::string make :
         {":", "mkdir", "mkfifo", "ln -s /dev/zero", "ln -s restore.xml"}) {
        SCOPED_TRACE(make);
        Sandbox box;
        box.patience(std::chrono::seconds(10));
        box.deployIn("mkdir -p $S; " + make + " $S/restore.xml; exec \"$0\" \"$@\"");
        EXPECT_EQ(codesOf(box), Lines({"error", ": tError_WrongInputFile"}));
        EXPECT_THAT(box.resultText(),
                    HasSubstr("<text>The XML file does not exist or is not a regular file. Check "
                              "the file '" +
                              Sandbox::sessionPath() + "/restore.xml'</text>"));
    }
}

// ---- names ----

// As they stand in the dump, and as the journal writes them.
const std::pair<std::string, std::string> kNames[] = {
    {"; touch /opt/qrd/var/sandbox/pwned", "'; touch /opt/qrd/var/sandbox/pwned'"},
    {"$(touch /opt/qrd/var/sandbox/pwned)", "'$(touch /opt/qrd/var/sandbox/pwned)'"},
    {"`touch /opt/qrd/var/sandbox/pwned`", "'`touch /opt/qrd/var/sandbox/pwned`'"},
    {"; rm -rf / #", "'; rm -rf / #'"},
    {"--remove", "--remove"},
    {"a&#10;client --remove b", "'a\\nclient --remove b'"},
    {"../../etc/passwd", "../../etc/passwd"},
    {"it's &quot;x&quot; \\", "'it\\'s \"x\" \\\\'"},
    {"%s%n%1%", "%s%n%1%"},
    {"'] | //client[@name='bob", "'\\'] | //client[@name=\\'bob'"},
    {"&lt;/text>&amp;amp;]]>", "'</text>&amp;]]>'"},
};

TEST(Names, AreArgumentsAndNothingElse) {
    std::string clients;
    std::string domains;
    std::string calls;
    for (const auto& [name, word] : kNames) {
        clients += "<client name=\"" + name + "\" deployer-action=\"delete\"/>";
        domains += "<domain name=\"a.com\" owner-guid=\"" + name + "\"/>";
        // It would be an option.
        if (word != "--remove") calls += "client --remove " + word + "\n";
    }
    for (const auto& [name, word] : kNames) {
        calls += "objectInfo --getinfo -property-names name -guid " + word + "\n";
    }
    calls += "bare correct_aw_statistics.pl\n";
    for (const bool gate : {false, true}) {
        Sandbox box;
        box.withGate(gate);
        box.writeDump("<migration-dump>" + clients + domains + "</migration-dump>");
        box.deploy();
        EXPECT_EQ(callsOf(box), calls);
        EXPECT_FALSE(box.hasFile("pwned"));
        // The status, and each but the last refused.
        EXPECT_EQ(codesOf(box).size(), 2 * std::size(kNames) + 1);
        EXPECT_TRUE(isWhole(box.resultText()) && isWhole(box.statusText()));
    }
}

// ---- texts ----

TEST(Texts, TooLongForACommandFailItAndNoOther) {
    const std::string text(1'000'000, 'a');
    Sandbox box;
    box.withoutModel();
    box.writeDump("<migration-dump><client name=\"bob\" contact=\"" + text +
                  "\"/><client name=\"eve\">"
                  "<traffic>" +
                  text + "</traffic></client></migration-dump>");
    box.deploy();
    EXPECT_EQ(codesOf(box),
              Lines({"success", "client bob: FailedClientDeployment > ExecCmd::Failed"}));
    EXPECT_THAT(box.resultText(), HasSubstr("System error 7: Argument list too long\n"));
    const Lines calls = linesOf(callsOf(box));
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_TRUE(calls[2] == "traffic --add-batch-user eve <<<" + text);
}

// The result is a document whatever a utility says.
TEST(Texts, OfAUtilityLeaveTheResultADocument) {
    Sandbox box;
    box.writeDump(client(""));
    box.faults(
        "match client --create bob: stdout '\\x01\\x00\\xff<message>&amp;]]>\\x1b[0m'; "
        "stderr '</text>\\xc3'; exit 1");
    box.deploy();
    const std::string result = box.resultText();
    EXPECT_TRUE(isWhole(result));
    EXPECT_TRUE(std::all_of(result.begin(), result.end(),
                            [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    EXPECT_EQ(codesOf(box).size(), 2U);
    EXPECT_THAT(result, HasSubstr("&lt;message&gt;&amp;amp;]]&gt;"));
    EXPECT_THAT(result, HasSubstr("Stderr is\n&lt;/text&gt;"));
}

}  // namespace
