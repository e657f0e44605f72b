// Foreign dumps: the agents that are installed, and what becomes of a dump that one of them is to
// translate.

#include "file_tree.h"
#include "outcome.h"
#include "scenario.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string kAt = "--session-path=" + Sandbox::sessionPath();
const std::string kAgents = "/opt/qrd/RMK/agents";

std::string control(const std::string& agent, const std::string& file) {
    return kAgents.substr(1) + "/" + agent + "/control/" + file;
}

// What "p.NAME" lines the debug log has, without their heads.
std::string logOf(const Sandbox& box, const std::string& category) {
    std::istringstream log(box.logText());
    std::string lines;
    for (std::string line; std::getline(log, line);) {
        const auto at = line.find(category + ": ");
        if (at != std::string::npos) lines += line.substr(at + category.size() + 2) + "\n";
    }
    return lines;
}

// ---- the list ----

// Catches: an agent that is lost or listed though it is broken, one broken agent that costs the
// others, an order that is the directory's, a description that is cut or not escaped.
TEST(AgentsList, HoldsWhatHasAGoodSpecFile) {
    Sandbox box;
    box.writeFile(control("zeta", "spec"), "Description:  \t<a>: b & c  \n\nEntryPoint:z.pl\n");
    box.writeFile(control("alpha", "spec"), "Description: first\nDescription:\n");
    box.writeFile(control("broken", "spec"), "Description: x\nno colon\n");
    box.writeFile(control("bare", "other"), "");
    box.writeFile(control("directory", "spec/x"), "");
    box.writeFile("opt/qrd/RMK/agents/plain-file", "Description: no\n");
    box.writeFile("session/migration.result", "old");
    const auto run = box.succeeds({"--get-agents-list", kAt});
    EXPECT_THAT(
        run.out,
        testing::MatchesRegex(
            "<\\?xml version=\"1.0\"\\?>\n<agents-list><agent><name>Wickerdeck</name>"
            "<description>Wickerdeck 3: [^<]*</description></agent><agent><name>alpha</name>"
            "<description></description></agent><agent><name>zeta</name>"
            "<description>&lt;a&gt;: b &amp; c  </description></agent></agents-list>\n"));
    EXPECT_EQ(box.resultText(), "old");
    const std::string told = logOf(box, "INFO p.AgentsFactory");
    for (const char* line :
         {"Parsing available agents info\n", "Parsing zeta\n",
          "/broken/control/spec is not a valid agent spec file\nUnable to parse spec file: /opt/",
          "/bare/control/spec is not a regular file\n",
          "/directory/control/spec is not a regular file\n"}) {
        EXPECT_THAT(told, HasSubstr(line));
    }
    EXPECT_THAT(told, Not(HasSubstr("plain-file")));
    EXPECT_THAT(logOf(box, "INFO p.Agent"),
                HasSubstr("Agent zeta\nDescription: <a>: b & c  \nEntryPoint: z.pl\n"
                          "Interpreter: perl\n"));
}

TEST(AgentsList, ThatCannotBeMadeEndsTheRun) {
    Sandbox box;
    const auto run = box.runCommand({"/bin/sh", "-c", "rm -r " + kAgents + " && exec \"$0\" \"$@\"",
                                     Sandbox::deployer(), "--get-agents-list", kAt});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, testing::StartsWith("Uncaught std::exception: "));
    EXPECT_THAT(box.logText(), HasSubstr("deployer finished.  (exit code is not reported)"));
}

// ---- how a translation ends ----

constexpr char kDtd[] = "<!ELEMENT r (#PCDATA | a)*>\n<!ELEMENT a EMPTY>\n";
const std::string kBoth = "DocumentType: my.dtd\nStylesheet: my.xsl\n";
const std::string kUpper =
    "<xsl:template match='/'><upper><xsl:value-of select='r'/></upper></xsl:template>";

struct Translation {
    std::string spec;          // of the agent "my"
    std::string templates;     // of its stylesheet
    std::string dump;          // none if empty
    Lines outcome;             // status and codes
    std::string text = {};     // a part of what is told
    std::string made = "old";  // restore.xml afterwards
    std::string agent = "my";
};

std::string sheet(const std::string& templates) {
    return "<xsl:stylesheet version='1.1' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
           templates + "</xsl:stylesheet>";
}

// A template that calls itself that often; its depth alone is none that anybody would stop.
std::string callingItself(const std::string& calls) {
    return "<xsl:template match='/'><xsl:call-template name='t'/></xsl:template>"
           "<xsl:template name='t'><xsl:param name='depth' select='0'/>"
           "<xsl:if test='$depth != 200'>" +
           calls + "</xsl:if></xsl:template>";
}

constexpr char kCall[] =
    "<xsl:call-template name='t'><xsl:with-param name='depth' select='$depth + 1'/>"
    "</xsl:call-template>";

void installAgent(Sandbox& box, const Translation& row) {
    box.writeFile(control(row.agent, "spec"), row.spec);
    box.writeFile(control(row.agent, "my.dtd"), kDtd);
    box.writeFile(control(row.agent, "beside.xsl"),
                  sheet("<xsl:output omit-xml-declaration='yes'/>"));
    if (!row.templates.empty()) {
        box.writeFile(control(row.agent, "my.xsl"),
                      sheet("<xsl:import href='beside.xsl'/>" + row.templates));
    }
}

void expectTranslation(const Translation& row) {
    Sandbox box;
    box.patience(std::chrono::seconds(30));
    if (!row.spec.empty()) installAgent(box, row);
    if (!row.dump.empty()) box.writeFile("session/dump.xml", row.dump);
    box.writeFile("session/restore.xml", "old");
    const auto run = box.run({"--translate-dump", kAt, "--agent-name", row.agent});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.out, "");
    // libxslt alone says more.
    const bool isQuiet = row.templates.empty() || row.outcome.front() == "success";
    EXPECT_EQ(isQuiet ? run.err : "", "");
    EXPECT_EQ(codesOf(box), row.outcome);
    EXPECT_THAT(box.resultText(), HasSubstr(row.text));
    EXPECT_EQ(box.readFile("session/restore.xml"), row.made);
    EXPECT_EQ(box.readFile("session/dump.xml"), row.dump);
    const bool isKnown = row.outcome.back() != ": AgentNotFound";
    EXPECT_THAT(box.statusText(), HasSubstr(isKnown ? "<migration-status><idle/>" : ""));
    EXPECT_EQ(box.hasFile("session/migration.status"), isKnown);
    EXPECT_FALSE(box.hasFile("session/written"));
}

const std::string kTerminated = "tError_Xslt_ApplyStylesheetTerminated";
const std::string kDump = "<r>x</r>";

Lines failed(const std::string& code) { return {"error", ": " + code}; }

// Catches: a dump that is not checked, checked with another DTD, changed on its way, or converted
// though it is wrong; an old restore.xml that stays or that a failure costs; a failure under
// another code or in other words; a stylesheet that writes, reaches out or runs for ever.
TEST(Translation, EndsAsCallersExpect) {
    const Lines done{"success"};
    const std::string odd =
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!DOCTYPE r SYSTEM "
        "\"http://127.0.0.1:9/r.dtd\">\n<r ><!-- \xE9 --><a ></a>\n</r>\n\n";
    const std::string canonical = "<migration-dump ><client name='x'/></migration-dump>";
    const std::string agentGone = " was not found or does not contain proper spec file<";
    const std::string dtd = kAgents + "/my/control/my.dtd";
    const Translation rows[] = {
        // Agents.
        {"", "", kDump, failed("AgentNotFound"), "Agent my" + agentGone},
        {"", "", kDump, failed("AgentNotFound"), "Agent " + agentGone, "old", ""},
        {"", "", kDump, failed("AgentNotFound"), "Agent ../agents/Wickerdeck" + agentGone, "old",
         "../agents/Wickerdeck"},
        {"", "", kDump, failed("AgentNotFound"), agentGone, "old", std::string(5000, 'x')},
        {"Kind: none\n", "", kDump, failed("AgentNotFound"), "Agent my" + agentGone},
        // Dumps.
        {kBoth, "", "", failed("tError_WrongInputFile"), Sandbox::sessionPath() + "/dump.xml'<"},
        {kBoth, "", "<r>", failed("tError_ParseFile"), "Premature end"},
        {kBoth, kUpper, "<r><b/></r>", failed("ExternalDtdValidationFailed"),
         "external DTD " + dtd + ". The errors are: Element b is not declared"},
        {"DocumentType: none.dtd\n", "", kDump, failed("InvalidDtdFile"),
         "The DTD file " + kAgents + "/my/control/none.dtd is invalid"},
        // Copies.
        {"\n", "", canonical, done, "", canonical},
        {"\n", "", kDump, failed("ExternalDtdValidationFailed"), "DTD /opt/qrd/RMK/zelvo.dtd."},
        {"DocumentType: my.dtd\n", "", odd, done, "", odd},
        // Conversions.
        {kBoth, kUpper, kDump, done, "", "<upper>x</upper>\n"},
        {kBoth, kUpper, kDump, done, "", "<upper>x</upper>\n", "100%41 my ag\xC3\xA9nt"},
        {kBoth, "<xsl:template match='a'>", kDump, failed("tError_XslParse_CanNotParseFile"),
         "Can not parse XSLT file '" + kAgents + "/my/control/my.xsl'"},
        {kBoth, "<xsl:import href='http://127.0.0.1:9/x.xsl'/>", kDump,
         failed("tError_XslParse_CanNotParseFile")},
        {kBoth,
         "<xsl:template match='/'><xsl:message terminate='yes'>no</xsl:message>"
         "</xsl:template>",
         kDump, failed(kTerminated), "terminated by XSLT stylesheet"},
        {kBoth, "<xsl:template match='/'/>", kDump, failed("tError_SaveFile")},
        {kBoth, callingItself("<xsl:call-template name='t'/>"), kDump, failed(kTerminated)},
        {kBoth, callingItself(std::string(kCall) + kCall), kDump, failed(kTerminated)},
        {kBoth,
         "<xsl:template match='/'><xsl:document href='" + Sandbox::sessionPath() +
             "/written'>x</xsl:document></xsl:template>",
         kDump, failed("tError_XmlInternal"),
         "Some error while applying stylesheet. Check the error reason and try again.<"},
        {kBoth,
         "<xsl:template match='/'><xsl:copy-of select=\"document('http://127.0.0.1:9/')\"/>"
         "</xsl:template>",
         kDump, failed("tError_XmlInternal")},
    };
    for (const Translation& row : rows) {
        SCOPED_TRACE(row.agent.substr(0, 50) + ": " + row.spec + row.templates + row.dump);
        expectTranslation(row);
    }
}

// Catches: an outcome that cannot be written and passes for a success, or one failure told as the
// other kind.
TEST(Translation, ThatCannotBeWrittenFails) {
    for (const bool converted : {false, true}) {
        Sandbox box;
        installAgent(box, {converted ? kBoth : "DocumentType: my.dtd\n", kUpper, "", {}});
        box.writeFile("session/dump.xml", kDump);
        box.writeFile("session/restore.xml/in-the-way", "");
        const auto run = box.run({"--translate-dump", kAt, "--agent-name", "my"});
        EXPECT_EQ(run.exitStatus, converted ? 0 : 1);
        EXPECT_THAT(run.err,
                    HasSubstr(converted ? "" : "Uncaught std::exception: boost::filesystem"));
        EXPECT_EQ(run.err.empty(), converted);
        EXPECT_EQ(codesOf(box), converted ? failed("tError_SaveFile") : Lines{"error"});
        EXPECT_THAT(box.statusText(), HasSubstr("<idle/>"));
    }
}

// ---- the agent that is installed ----

ProcessResult translate(Sandbox& box, const std::string& dump) {
    box.writeFile("session/dump.xml", dump);
    return box.run({"--translate-dump", kAt, "--agent-name", "Wickerdeck"});
}

// Catches: anything of a foreign dump that is lost, or that arrives as something else; archives
// that are looked for under another name, and content in another place or of another owner.
TEST(Wickerdeck, ArrivesWhole) {
    Sandbox box;
    box.withClients();
    box.setup(sourceFile("examples/leaving-wickerdeck/panel-before.txt"));
    EXPECT_EQ(translate(box, sourceFile("examples/leaving-wickerdeck/dump.xml")).err, "");
    EXPECT_EQ(codesOf(box), Lines{"success"});
    box.runCommand(
        {SOURCE_DIR "/examples/leaving-wickerdeck/make-archives", Sandbox::sessionPath()});
    box.deploy();
    EXPECT_EQ(codesOf(box), Lines{"success"});
    EXPECT_EQ(callsOf(box), sourceFile("examples/leaving-wickerdeck/calls.txt"));
    EXPECT_EQ(treeOf(box, "/opt/qrd/var/vhosts") + "\n" +
                  treeOf(box, "/opt/qrd/var/mailnames/hamnstudion.example"),
              sourceFile("examples/leaving-wickerdeck/sites-after.txt"));
    // It passes for a canonical dump in the eyes of the canonical DTD too.
    box.writeFile(control("none", "spec"), "");
    box.writeFile("session/dump.xml", box.readFile("session/restore.xml"));
    box.succeeds({"--translate-dump", kAt, "--agent-name", "none"});
    EXPECT_EQ(codesOf(box), Lines{"success"});
}

// Catches: a limit that is rounded, written with an exponent, taken in another unit or left out,
// and a text that is no number and would end a whole restore; a record that would cost the others
// of its zone; a record, or what a database holds, that goes missing in silence; the parts of a
// value taken for each other.
TEST(Wickerdeck, HasExactLimitsAndNoRecordThatWouldCostTheOthers) {
    const std::string rows[][3] = {
        {"quota of='disk' amount='0.3' unit='KB'", "disk_space\">307<", ""},
        {"quota of='traffic' amount='2097152' unit='GB'", "max_traffic\">2251799813685248<", ""},
        {"quota of='mailbox-size' amount='123456789012345' unit='B'",
         "mbox_quota\">123456789012345<", ""},
        {"quota of='mailboxes' amount='1234567890' unit='KB'", "max_box\">1234567890<", ""},
        {"quota of='lists' amount='unlimited'", "max_maillists\">-1<", ""},
        {"quota of='databases' amount='0'", "max_db\">0<", ""},
        {"quota of='processes' amount='many'", "", ""},
        {"quota of='disk' amount='many'", "", "Not an amount: quota disk \"many\""},
        {"quota of='lists' amount=''", "", "Not an amount: quota lists \"\""},
        {"quota of='lists' amount='-2'", "", "Not an amount"},
        {"quota of='lists' amount='1e400'", "", "Not an amount"},
        {"record host='@' type='MX' value=' 5 mx.b.example. '",
         "dst=\"mx.b.example.\" opt=\"5\" src=\"a.example.\"", ""},
        {"record host='_x._tcp.y' type='SRV' value='0 5 5 5.b.'",
         "dst=\"5.b.\" opt=\"0 5 5\" src=\"_x._tcp.y.a.example.\"", ""},
        {"record host='www' type='AAAA' value='2001:db8::1'", "", ""},
        {"record host='@' type='MX' value='mx.b.example.'", "", "record MX @ of a.example \"mx.b"},
        {"record host='@' type='SRV' value='0 5 sip.b.example.'", "", "record SRV @"},
        {"record host='k' type='TXT' value='v=DKIM1; p=x'", "", "record TXT k"},
        {"record host='a,b' type='A' value='192.0.2.1'", "", "record A a,b"},
        {"database name='g' archive='g.sql'", "", "rows of database g of a.example in \"g.sql\""},
    };
    for (const auto& [element, expected, told] : rows) {
        SCOPED_TRACE(element);
        Sandbox box;
        const auto run = translate(box, "<wickerdeck release='3'><site name='a.example'><" +
                                            element + "/></site></wickerdeck>");
        EXPECT_EQ(codesOf(box), told.starts_with("Not") ? failed(kTerminated) : Lines{"success"});
        EXPECT_EQ(run.err.empty(), told.empty()) << run.err;
        EXPECT_THAT(run.err, HasSubstr(told));
        const std::string made = box.readFile("session/restore.xml");
        EXPECT_THAT(made, HasSubstr(expected));
        EXPECT_EQ(countOf(made, "<limit ") + countOf(made, "<dnsrec "), expected.empty() ? 0 : 1);
    }
}

}  // namespace
