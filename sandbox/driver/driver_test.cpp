// The driver itself: a text that is read otherwise than it is meant would let wrong restores pass.

#include "file_tree.h"
#include "outcome.h"
#include "plain_words.h"
#include "scenario.h"

#include <gtest/gtest.h>

namespace {

std::string message(const std::string& code, const std::string& text,
                    const std::string& line = "7") {
    return "<message code='" + code +
           "' severity='error'><context>void f()</context>"
           "<file>./a/b.cpp</file><line>" +
           line + "</line><text>" + text + "</text></message>";
}

// Catches: two texts that look alike in their short form, and a message that has lost its place.
TEST(Outlines, ShowEveryTextInItsOwnWords) {
    const std::string failed =
        "Execution of /opt/qrd/admin/vlib/api-cli/client.php --create b failed with return code "
        "5.\n";
    const std::pair<std::string, std::string> kTexts[] = {
        {failed, ": client --create b => 5"},
        {failed + "Stderr is\na\nb\n", ": client --create b => 5: a\\nb"},
        {failed + "Stderr is\na", ": client --create b => 5 | Stderr is\\na"},
        {failed + "Stdout is\na\n", ": client --create b => 5 | Stdout is\\na\\n"},
        {failed + "Stderr is\n=&gt;\n", " " + onOneLine(failed) + "Stderr is\\n=>\\n"},
        {"Execution of /bin/x failed with return code 5.\n",
         " Execution of /bin/x failed with return code 5.\\n"},
        {"a\\n[./exec/a.cpp:12]", " a\\\\n[PLACE]"}};
    for (const auto& [text, shown] : kTexts) {
        const Outcome outcome = outcomeIn(
            "<execution-result status='success'><object type='client' "
            "name='b'>" +
            message("ExecCmd::Failed", text) + "</object></execution-result>");
        EXPECT_EQ(outcome.outline, "client b\n  ExecCmd::Failed" + shown + "\n");
        EXPECT_EQ(outcome.codes, Lines{"client b: ExecCmd::Failed"});
    }
    EXPECT_EQ(
        outcomeIn("<execution-result>" + message("A", "x", "") + "</execution-result>").outline,
        "without a place: A x\n");
    EXPECT_EQ(outcomeIn("<execution-result>").status, "malformed");
}

TEST(RandomWords, StayTheSameWord) {
    const PlainWords words("QRD_PASSWORD=aB3dE6g a -passwd ''\nQRD_PASSWORD=secret-1 b\n",
                           "no /opt/qrd/RMK/tmp/xxAbC123 and /s/migration.resultZyX987 for "
                           "/s/migration.resultXXXXXX",
                           "QRD_PASSWORD=1234567 /s/migration.result");
    EXPECT_EQ(words.in("aB3dE6g xxAbC123: 1234567, aB3dE6gh /s/migration.resultZyX987 secret-1 "
                       "/s/migration.result"),
              "RANDOM1 xxRANDOM2: RANDOM4, aB3dE6gh /s/migration.resultRANDOM3 secret-1 "
              "/s/migration.result");
}

TEST(Cases, StandInTheirSurroundings) {
    const auto cases = casesIn(
        "--- around\noptions: --a\ndump:\n<d>@@</d>\ncalls:\nfirst\n@@\nlast\nresult:\n"
        "domain d\n  @@\n=== One\n# Why.\noptions: --b\ndump: <x/>\ncalls:\n1\n2\nresult:\nA a\n"
        "  B b\n\n=== Two\ndump: <y/>\n--- nothing\n=== Three\ntree: /opt/a ./ a:b 755\nb c:d\n");
    ASSERT_EQ(cases.size(), 3U);
    EXPECT_EQ(cases[0].parts,
              (std::map<std::string, std::string>{{"options", "--a\n--b\n"},
                                                  {"dump", "<d><x/></d>\n"},
                                                  {"calls", "first\n1\n2\nlast\n"},
                                                  {"result", "domain d\n  A a\n    B b\n"}}));
    EXPECT_EQ(cases[1].part("calls") + cases[1].part("result"), "first\nlast\n");
    EXPECT_EQ(cases[2].parts,
              (std::map<std::string, std::string>{{"tree /opt/a", "./ a:b 755\nb c:d\n"}}));
}

// Catches: anything of a tree that is not seen, and an archive that is not what its lines say.
TEST(Files, ComeOutOfAnArchiveAsTheyStandInTheTree) {
    for (const std::string name : {"a.tar", "a.tgz"}) {
        Sandbox box;
        prepare(box, casesIn("=== One\narchive: " + name +
                             "\nb/ 1700\nb/c 640 'x\\n\\'\\xff'\n'd e'\nlink -> ../no\n")[0]);
        const auto run =
            box.runCommand({"/bin/sh", "-c",
                            "umask 0; cd /opt/qrd/var && mkdir t && cd t && tar -xpf "
                            "../sandbox/session/" +
                                name + " && chown qrdadm:qrdcln b/c && mkfifo p && chmod 755 ."});
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(treeOf(box, "/opt/qrd/var/t"),
                  "./ root:root 755\nb/ root:root 1700\nb/c qrdadm:qrdcln 640 'x\\n\\'\\xff'\n"
                  "'d e' root:root 644 ''\nlink root:root -> ../no\np root:root 666 (p)\n");
    }
}

}  // namespace
