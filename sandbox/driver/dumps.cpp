#include "dumps.h"

#include <fstream>
#include <set>

namespace {

const std::string kPanelEnvironment = "ALLOW_WEAK_PASSWORDS='' LANG=en_US.UTF-8 ";
const std::string kStatistics = "bare correct_aw_statistics.pl\n";
const std::string kDeclaration = "<?xml version=\"1.0\"?>\n";

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

Lines linesOf(std::istream& stream) {
    Lines lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string xmlText(const std::string& text) {
    const std::string escaped =
        replaceAll(replaceAll(replaceAll(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
    return replaceAll(escaped, "\\n", "\n");
}

// One element a line, so that a difference can be seen.
std::string breakLines(const std::string& document) { return replaceAll(document, "><", ">\n<"); }

// The lines stand in the debug log, whole and in this order.
void expectInLog(const Sandbox& box, const std::string& text) {
    const std::string log = box.logText();
    std::istringstream stream(text);
    std::size_t at = 0;
    for (const std::string& line : linesOf(stream)) {
        at = log.find("p.log: " + line + "\n", at);
        ASSERT_NE(at, std::string::npos) << "the debug log lacks, or has too early: " << line;
    }
}

}  // namespace

std::vector<Case> casesOf(const std::string& file) {
    const std::string path = std::string(SOURCE_DIR) + "/tests/system/" + file;
    std::ifstream stream(path);
    const std::regex header("(before|faults|options|dump|calls|result|status|log):(?: (.+))?");
    std::vector<Case> cases;
    std::string* part = nullptr;
    std::smatch found;
    for (const std::string& line : linesOf(stream)) {
        if (line.starts_with("=== ")) {
            cases.push_back({line.substr(4)});
            part = nullptr;
        } else if (!cases.empty() && std::regex_match(line, found, header)) {
            part = &cases.back().parts[found[1]];
            *part = found[2];
        } else if (part != nullptr) {
            if (!line.empty()) *part += line + "\n";
        } else if (!line.empty() && line[0] != '#') {
            throw std::runtime_error(path + ": stray line '" + line + "'");
        }
    }
    if (cases.empty()) throw std::runtime_error(path + " holds no cases");
    return cases;
}

std::string expand(const std::string& text) {
    const std::string handler =
        "bare xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
        "SuspendHandlerRunner.php ";
    const std::string session = " $1 " + Sandbox::sessionPath();
    const std::pair<const char*, std::string> kWords[] = {
        {R"(\$failed )",
         "ExecCmd::Failed @ ExecCmd::reportError ./exec/exec_cmd.cpp @ Execution of "
         "/opt/qrd/admin/vlib/api-cli/"},
        {R"(\$suspend (\S+))", handler + "suspend" + session},
        {R"(\$resume (\S+))", handler + "unsuspend" + session}};
    std::string expanded = text;
    for (const auto& [word, meaning] : kWords) {
        expanded = std::regex_replace(expanded, std::regex(word), meaning);
    }
    return expanded;
}

std::string callsOf(const Sandbox& box) {
    std::string text;
    for (const std::string& line : box.journal()) {
        const bool isPanel = line.starts_with(kPanelEnvironment);
        text += (isPanel ? line.substr(kPanelEnvironment.size()) : "bare " + line) + "\n";
    }
    return text;
}

std::string resultDocument(const std::string& outline, const std::string& status) {
    const std::regex message(R"((\S+) @ (\S+) (\S+) @ (.*))");
    const std::regex object(R"((\S+) (\S+))");
    std::istringstream stream(expand(outline));
    std::vector<std::pair<std::size_t, std::string>> open;  // indentation, end tag
    std::string inside;
    const auto close = [&](std::size_t indentation) {
        for (; !open.empty() && open.back().first >= indentation; open.pop_back()) {
            inside += open.back().second;
        }
    };
    for (const std::string& line : linesOf(stream)) {
        const std::size_t indentation = line.find_first_not_of(' ');
        if (indentation == std::string::npos) continue;
        close(indentation);
        const std::string words = line.substr(indentation);
        std::smatch word;
        if (std::regex_match(words, word, message)) {
            inside += "<message code=\"" + word.str(1) + "\" severity=\"error\"><context>" +
                      word.str(2) + "</context><file>" + word.str(3) +
                      "</file><line>N</line><text>" + xmlText(word[4]) + "</text>";
            open.emplace_back(indentation, "</message>");
        } else if (std::regex_match(words, word, object)) {
            inside += "<object name=\"" + word.str(1) + "\" type=\"" + word.str(2) + "\">";
            open.emplace_back(indentation, "</object>");
        } else {
            throw std::runtime_error("neither an object nor a message: " + words);
        }
    }
    close(0);
    const std::string root = "<execution-result status=\"" + status + "\"";
    return kDeclaration + root + (inside.empty() ? "/>" : ">" + inside + "</execution-result>") +
           "\n";
}

std::string statusDocument(const std::string& words) {
    const std::regex form(
        R"((\d+) of (\d+) accounts, (\d+) of (\d+) domains(?:, (\S+) (\S+))?\n*)");
    std::smatch word;
    if (!std::regex_match(words, word, form)) throw std::runtime_error("no status: " + words);
    return kDeclaration + "<migration-status total-accounts=\"" + word.str(2) +
           "\" total-domains=\"" + word.str(4) + "\" completed-accounts=\"" + word.str(1) +
           "\" completed-domains=\"" + word.str(3) + "\"" +
           (word[5].matched ? "><current-object type=\"" + word.str(6) + "\">" + word.str(5) +
                                  "</current-object></migration-status>\n"
                            : "/>\n");
}

void prepare(Sandbox& box, const Case& one) {
    box.setup(one.part("before"));
    box.faults(one.part("faults"));
    box.writeDump("<migration-dump>" + one.part("dump") + "</migration-dump>");
}

Lines deployOptions(const std::string& more) {
    Lines all{"--deploy-dump", "--no-repository", "--session-path", Sandbox::sessionPath()};
    std::istringstream words(more);
    for (std::string word; words >> word;) all.push_back(word);
    return all;
}

void expectResult(const Sandbox& box, const std::string& document) {
    // A line number that stands in a sentence holds still too.
    const std::string still =
        std::regex_replace(box.normalizedResult(), std::regex(R"(\.cpp:\d+\])"), ".cpp:N]");
    EXPECT_EQ(breakLines(still), breakLines(document));
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
    box.succeeds(deployOptions(one.part("options")));
    std::string calls = expand(one.part("calls"));
    if (calls.find("...\n") == std::string::npos) calls += "...\n";
    EXPECT_EQ(callsOf(box), replaceAll(calls, "...\n", kStatistics));
    expectResult(box, resultDocument(one.part("result")));
    if (!one.part("status").empty()) {
        EXPECT_EQ(box.statusText(), statusDocument(one.part("status")));
    }
    expectInLog(box, one.part("log"));
    expectNoPasswordInArguments(box);
}

void runCases(const std::string& file) {
    for (const Case& one : casesOf(file)) runCase(one);
}
