#include "scenario.h"

#include "file_tree.h"
#include "outcome.h"

#include <regex>
#include <set>
#include <stdexcept>

namespace {

const std::string kPanelEnvironment = "ALLOW_WEAK_PASSWORDS='' LANG=en_US.UTF-8 ";
const std::string kStatistics = "bare correct_aw_statistics.pl\n";
const std::string kHere = "@@";

// The case's own text in its place within what stands around it.
std::string within(const std::string& around, const std::string& own) {
    const auto at = around.find(kHere);
    if (at == std::string::npos) return around + own;
    const auto lineStart = around.rfind('\n', at) + 1;
    const std::string before = around.substr(lineStart, at - lineStart);
    const std::string after = around.substr(at + kHere.size());
    if (before.find_first_not_of(' ') != std::string::npos || !after.starts_with('\n')) {
        return around.substr(0, at) + own.substr(0, own.size() - own.ends_with('\n')) + after;
    }
    std::string text = around.substr(0, lineStart);
    for (const std::string& line : linesOf(own)) text += before + line + "\n";
    return text + after.substr(1);
}

void surround(Case& one, const Case& around) {
    for (const auto& [title, text] : around.parts) {
        std::string& own = one.parts[title];
        if (title != "result" || !own.empty()) own = within(text, own);
    }
}

// The lines stand in the debug log, whole and in this order.
void expectInLog(const Sandbox& box, const std::string& text) {
    const std::string log = box.logText();
    std::size_t at = 0;
    for (const std::string& line : linesOf(text)) {
        at = log.find("p.log: " + line + "\n", at);
        ASSERT_NE(at, std::string::npos) << "the debug log lacks, or has too early: " << line;
        at += line.size();
    }
}

// A "; " in quotes is an argument's own.
std::string oneALine(std::string calls) {
    bool isQuoted = false;
    for (std::size_t at = 0; at < calls.size(); ++at) {
        if (calls[at] == '\\') {
            ++at;
        } else if (calls[at] == '\'') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && calls.compare(at, 2, "; ") == 0) {
            calls.replace(at, 2, "\n");
        }
    }
    return calls;
}

// Every call as it is made: "$create" and "$update" are two.
std::string wholeCalls(const std::string& brief) {
    const std::string text = oneALine(brief);
    static const std::regex create("\\$create (\\S+)\n");
    static const std::regex update("\\$update (\\S+)\n");
    const std::string end = "\ndomain_pref --update $1 -www true\n";
    return std::regex_replace(
        std::regex_replace(text, create, "domain --create $1 -owner admin -notify false" + end),
        update, "domain --update $1" + end);
}

// The dump with its templates' items as elements.
std::string withItems(std::string text) {
    static const std::regex brief("\\$items\\(([^)]*)\\)");
    static const std::regex item("([^\\s=]+)=(\\S*)");
    for (std::smatch found; std::regex_search(text, found, brief);) {
        text = found.prefix().str() +
               std::regex_replace(found.str(1), item,
                                  "<template-item name=\"$1\">$2</template-item>") +
               found.suffix().str();
    }
    return text;
}

// The dump with its archives as elements. An offset makes the archive another object's too.
std::string wholeDump(const std::string& text) {
    static const std::regex brief(
        "\\$(content|cid)\\(([a-z_-]+) (?:([^ )]*)/)?([^ /)]+)(?: ([^)]+))?\\)");
    std::string dump;
    auto rest = text.cbegin();
    std::smatch found;
    for (; std::regex_search(rest, text.cend(), found, brief); rest = found.suffix().first) {
        const bool isAlone = found[1] == "content";
        dump += found.prefix().str() + (isAlone ? "<content>" : "") + "<cid type=\"" +
                found.str(2) + (found[3].matched ? "\" path=\"" + found.str(3) : "") +
                (found[5].matched ? "\" referrer=\"true\" offset=\"" + found.str(5) : "") +
                "\"><content-file>" + found.str(4) + "</content-file></cid>" +
                (isAlone ? "</content>" : "");
    }
    return dump + std::string(rest, text.cend());
}

void expectTrees(Sandbox& box, const Case& one) {
    for (const auto& [title, text] : one.parts) {
        if (title.starts_with("tree ")) {
            EXPECT_EQ(treeOf(box, title.substr(5)), text) << title;
        }
    }
}

}  // namespace

std::vector<Case> casesOf(const std::string& file) {
    return casesIn(sourceFile("tests/system/" + file));
}

std::vector<Case> casesIn(const std::string& text) {
    static const std::regex header(
        "((?:before|faults|options|dump|calls|result|status|log)(?=:)|(?:archive|tree): \\S+):?"
        "(?: (.+))?");
    std::vector<Case> cases;
    Case around;
    Case* current = nullptr;
    std::string* part = nullptr;
    std::smatch found;
    const auto finish = [&] {
        if (current != nullptr && current != &around) surround(*current, around);
        part = nullptr;
    };
    for (const std::string& line : linesOf(text)) {
        if (line.starts_with("--- ")) {
            finish();
            around = {line.substr(4)};
            current = &around;
        } else if (line.starts_with("=== ")) {
            finish();
            current = &cases.emplace_back(Case{line.substr(4)});
        } else if (current != nullptr && std::regex_match(line, found, header)) {
            part = &current->parts[replaceAll(found[1], ": ", " ")];
            *part = found[2].matched ? found.str(2) + "\n" : "";
        } else if (part != nullptr) {
            if (!line.empty()) *part += line + "\n";
        } else if (!line.empty() && line[0] != '#') {
            throw std::runtime_error("stray line '" + line + "'");
        }
    }
    finish();
    if (cases.empty()) throw std::runtime_error("there are no cases");
    return cases;
}

std::string callsOf(const Sandbox& box) {
    static const std::regex handler(
        "bare xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
        "SuspendHandlerRunner\\.php (?:(suspend)|unsuspend) (\\S+) " +
        Sandbox::sessionPath());
    std::string text;
    std::smatch found;
    for (const std::string& line : box.journal()) {
        const bool isPanel = line.starts_with(kPanelEnvironment);
        const std::string call = isPanel ? line.substr(kPanelEnvironment.size()) : "bare " + line;
        const bool isHandler =
            call.starts_with("bare xt-engine-") && std::regex_match(call, found, handler);
        text += (isHandler ? (found[1].matched ? "$suspend " : "$resume ") + found.str(2) : call) +
                "\n";
    }
    return text;
}

std::string statusOf(const Sandbox& box) {
    static const std::regex form(
        "<\\?xml version=\"1.0\"\\?>\n<migration-status total-accounts=\"(\\d+)\" "
        "total-domains=\"(\\d+)\" completed-accounts=\"(\\d+)\" completed-domains=\"(\\d+)\""
        "(?:/>|><current-object type=\"(\\w+)\">([^<]+)</current-object></migration-status>)\n");
    const std::string document = box.statusText();
    std::smatch found;
    if (!std::regex_match(document, found, form)) return document;
    return found.format("$3 of $1 accounts, $4 of $2 domains") +
           (found[5].matched ? found.format(", $6 $5") : "");
}

std::string dumpOf(const Case& one) {
    return "<migration-dump>" + wholeDump(withItems(one.part("dump"))) + "</migration-dump>";
}

void prepare(Sandbox& box, const Case& one) {
    box.setup(oneALine(one.part("before")));
    box.faults(one.part("faults"));
    for (const auto& [title, text] : one.parts) {
        if (title.starts_with("archive "))
            makeArchive(box.sessionDir() + "/" + title.substr(8), text);
    }
    box.writeDump(dumpOf(one));
}

void expectNoPasswordInArguments(const Sandbox& box) {
    const std::string word = R"(('(?:\\.|[^'\\])*'|[^ ]*))";
    const std::regex password("QRD_(?:CRYPTED_)?PASSWORD=" + word + " ");
    // -fppasswd takes its password in no other way.
    const std::regex elsewhere("^(?:[A-Z_]+=" + word + " )*| -fppasswd " + word);
    std::set<std::string> passwords;
    for (const std::string& line : box.journal()) {
        std::smatch found;
        if (std::regex_search(line, found, password)) passwords.insert(found[1]);
    }
    passwords.erase("''");
    for (const std::string& line : box.journal()) {
        const std::string arguments = std::regex_replace(line, elsewhere, "");
        for (const std::string& one : passwords) {
            EXPECT_EQ(arguments.find(one), std::string::npos) << line;
        }
    }
}

void runCase(const Case& one) {
    SCOPED_TRACE(one.name);
    Sandbox box;
    prepare(box, one);
    box.deploy(one.part("options"));
    std::string calls = wholeCalls(one.part("calls"));
    if (calls.find("...\n") == std::string::npos) calls += "...\n";
    calls = replaceAll(replaceAll(calls, "no ...\n", ""), "...\n", kStatistics);
    EXPECT_EQ(callsOf(box), calls);
    const std::string result = one.part("result");
    EXPECT_EQ(outcomeOf(box), (result.starts_with("error\n") ? "" : "success\n") + result);
    if (!one.part("status").empty()) {
        EXPECT_EQ(statusOf(box) + "\n", one.part("status"));
    }
    expectTrees(box, one);
    expectInLog(box, one.part("log"));
    expectNoPasswordInArguments(box);
}

void runCases(const std::string& file) {
    for (const Case& one : casesOf(file)) runCase(one);
}
