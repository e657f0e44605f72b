// For tests of runs that go wrong: what the result document tells, read without the code that
// wrote it, and the calls that were made.
#pragma once

#include "sandbox.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

struct Told {
    std::string where;  // "reseller boreal/domain boreal.example", empty for the root
    std::string codes;  // from the outermost message to the innermost: "A > B"
    std::string text;   // of the innermost, with its markup as it stands
};

struct Outline {
    std::string status;  // of the root; "malformed" when the tags do not match
    std::vector<Told> told;
};

inline std::string attributeOf(const std::string& tag, const std::string& name) {
    const auto at = tag.find(" " + name + "=\"");
    if (at == std::string::npos) return "";
    const auto from = at + name.size() + 3;
    return tag.substr(from, tag.find('"', from) - from);
}

inline Outline outlineOf(const std::string& document) {
    Outline outline;
    Told told;
    Lines open;    // elements
    Lines places;  // one an open object
    std::size_t end = 0;
    for (auto at = document.find('<'); at != std::string::npos; at = document.find('<', end)) {
        const std::string before = document.substr(end, at - end);
        end = document.find('>', at);
        if (end == std::string::npos) return {"malformed", {}};
        const std::string tag = document.substr(at + 1, end++ - at - 1);
        if (tag.starts_with('?')) continue;
        if (!tag.starts_with('/')) {
            open.push_back(tag.substr(0, tag.find_first_of(" /")));
            if (open.size() == 1) outline.status = attributeOf(tag, "status");
            if (open.back() == "message") {
                told.codes += (told.codes.empty() ? "" : " > ") + attributeOf(tag, "code");
            } else if (open.back() == "object") {
                places.push_back((places.empty() ? "" : places.back() + "/") +
                                 attributeOf(tag, "type") + " " + attributeOf(tag, "name"));
            }
            if (!tag.ends_with('/')) continue;
        } else if (open.empty() || tag != "/" + open.back()) {
            return {"malformed", {}};
        }
        const std::string name = open.back();
        open.pop_back();
        if (name == "text") told.text = before;
        if (name == "object") places.pop_back();
        if (name == "message" && open.back() != "message") {
            told.where = places.empty() ? "" : places.back();
            outline.told.push_back(told);
            told = {};
        }
    }
    return open.empty() && !document.empty() ? outline : Outline{"malformed", {}};
}

// True for a document that a reader can take: every element is closed, and the file ends there.
inline bool isWhole(const std::string& document) {
    return document.ends_with(">\n") && outlineOf(document).status != "malformed";
}

// The status, and then one line a message: "client bob: FailedClientDeployment > ExecCmd::Failed".
inline Lines outcomeOf(const Sandbox& box) {
    const Outline outline = outlineOf(box.resultText());
    Lines lines{outline.status};
    for (const Told& told : outline.told) lines.push_back(told.where + ": " + told.codes);
    return lines;
}

// A call of the journal without its environment.
inline std::string bareCall(const std::string& line) {
    static const std::regex environment(R"(^(?:[A-Z_]+=(?:'(?:\\.|[^'\\])*'|[^ ]*) )*)");
    return std::regex_replace(line, environment, "", std::regex_constants::format_first_only);
}

// All calls, each cut at a length that still tells them apart.
inline Lines bareCalls(const Sandbox& box, std::size_t length = std::string::npos) {
    Lines calls = box.journal();
    for (std::string& line : calls) line = bareCall(line).substr(0, length);
    return calls;
}

inline int countOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

inline Lines deployment(Lines more = {}) {
    more.insert(more.end(),
                {"--deploy-dump", "--no-repository", "--session-path", Sandbox::sessionPath()});
    return more;
}

// Deploys in a shell of the sandbox: "$0" "$@" in the script is the deployer with its arguments,
// $S the session.
inline ProcessResult deployIn(Sandbox& box, const std::string& script, const Lines& more = {}) {
    Lines command{"/bin/sh", "-c", "S=" + Sandbox::sessionPath() + "; " + script,
                  Sandbox::deployer()};
    const Lines arguments = deployment(more);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return box.runCommand(command);
}

// A file of the sources, by its path from their top.
inline std::string sourceFile(const std::string& path) {
    std::ifstream file(std::string(SOURCE_DIR) + "/" + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A file of the example company.
inline std::string example(const std::string& name) {
    return sourceFile("examples/hosting-company/" + name);
}
