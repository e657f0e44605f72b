// Tests of whole restores: a dump in a few words, and all that must come of it as texts.
#pragma once

#include "support/result_text.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

// What every utility of the panel gets; a line of callsOf() stands without it.
inline constexpr std::string_view kPanelEnvironment = "ALLOW_WEAK_PASSWORDS='' LANG=en_US.UTF-8 ";

// The last command of a restore, which is no utility of the panel.
inline const std::string kStatistics = "bare correct_aw_statistics.pl\n";

// The journal in one text. A call without the panel's environment is marked as "bare".
inline std::string callsOf(const Sandbox& box) {
    std::string text;
    for (const std::string& line : box.journal()) {
        text += line.starts_with(kPanelEnvironment) ? line.substr(kPanelEnvironment.size())
                                                    : "bare " + line;
        text += '\n';
    }
    return text;
}

// ---- results ----

// Where a failure was raised.
struct Place {
    std::string function;
    std::string file;
};

inline const Place kCommand{"ExecCmd::reportError", "./exec/exec_cmd.cpp"};
inline const Place kXPath{"XmlNode::getNode", "./xml/xml_node.cpp"};
inline const Place kDomain{"tDomainDeployer::operator()", "./restore/domain_deployer.cpp"};

inline std::string message(const std::string& code, const Place& place, const std::string& text,
                           const std::string& inner = "") {
    return "<message code=\"" + code + "\" severity=\"error\"><context>" + place.function +
           "</context><file>" + place.file + "</file><line>N</line><text>" + text + "</text>" +
           inner + "</message>";
}

inline std::string object(const std::string& name, const std::string& type,
                          const std::string& inside) {
    return "<object name=\"" + name + "\" type=\"" + type + "\">" + inside + "</object>";
}

// A command of the panel that failed; arguments as a shell would be given them.
inline std::string failedCommand(const std::string& utility, const std::string& arguments,
                                 const std::string& error, int code = 1,
                                 const std::string& input = "") {
    return message("ExecCmd::Failed", kCommand,
                   "Execution of /opt/qrd/admin/vlib/api-cli/" + utility + ".php " + arguments +
                       " failed with return code " + std::to_string(code) + ".\n" +
                       (input.empty() ? "" : "Stdin is\n" + input + "\n") +
                       (error.empty() ? "" : "Stderr is\n" + error + "\n"));
}

inline std::string failedClient(const std::string& name, const std::string& inner) {
    return message("FailedClientDeployment",
                   {"ClientDeployer::deployClientData", "./restore/client_deployer.cpp"},
                   "Failed deployment of client " + name, inner);
}

inline std::string failedDomain(const std::string& name, const std::string& inner) {
    return message("FailedDomainDeployment", kDomain, "Failed deployment of domain " + name, inner);
}

inline std::string notSupported(const std::string& what, const Place& place) {
    return message("NotSupportedOperation", place, "The operation is not supported: " + what);
}

inline std::string missingNode(const std::string& expression, const std::string& path) {
    return message("tError_XPath_CantEvaluate", kXPath,
                   "The XML document is invalid for XPath exception.\nCan not evaluate result of "
                   "expression '" +
                       expression + " at path '" + path + "''");
}

// One element a line, so that a difference can be seen.
inline std::string breakLines(const std::string& document) {
    return std::regex_replace(document, std::regex("><"), ">\n<");
}

inline std::string result(const std::string& inside = "", const std::string& status = "success") {
    const std::string root = "<execution-result status=\"" + status + "\"";
    return inside.empty() ? root + "/>" : root + ">" + inside + "</execution-result>";
}

// A line number that stands in a sentence holds still too.
inline std::string resultOf(const Sandbox& box) {
    return std::regex_replace(box.normalizedResult(), std::regex(R"(\.cpp:\d+\])"), ".cpp:N]");
}

inline void expectResult(const Sandbox& box, const std::string& expected) {
    EXPECT_EQ(breakLines(resultOf(box)), breakLines("<?xml version=\"1.0\"?>\n" + expected + "\n"));
}

// ---- status ----

inline void expectStatus(const Sandbox& box, int accounts, int ofAccounts, int domains,
                         int ofDomains, const std::string& object = "",
                         const std::string& type = "") {
    const auto number = [](int value) { return "=\"" + std::to_string(value) + "\""; };
    const std::string root = "<migration-status total-accounts" + number(ofAccounts) +
                             " total-domains" + number(ofDomains) + " completed-accounts" +
                             number(accounts) + " completed-domains" + number(domains);
    EXPECT_EQ(box.statusText(),
              "<?xml version=\"1.0\"?>\n" + root +
                  (object.empty() ? "/>\n"
                                  : "><current-object type=\"" + type + "\">" + object +
                                        "</current-object></migration-status>\n"));
}

// ---- passwords ----

// No password that a utility was given stands in an argument list. The one exception is the value
// of -fppasswd, which that option takes in no other way.
inline void expectNoPasswordInArguments(const Sandbox& box) {
    const std::string word = R"(('(?:\\.|[^'\\])*'|[^ ]*))";
    const std::regex variable("QRD_(?:CRYPTED_)?PASSWORD=" + word + " ");
    const std::regex environment("^(?:[A-Z_]+=" + word + " )*");
    const std::regex frontpage(" -fppasswd " + word);
    std::vector<std::string> passwords;
    for (const std::string& line : box.journal()) {
        std::smatch found;
        if (std::regex_search(line, found, variable) && found[1] != "''") {
            passwords.push_back(found[1]);
        }
    }
    for (const std::string& line : box.journal()) {
        const std::string arguments =
            std::regex_replace(std::regex_replace(line, environment, ""), frontpage, "");
        for (const std::string& password : passwords) {
            EXPECT_EQ(arguments.find(password), std::string::npos) << line;
        }
    }
}

// ---- a whole restore ----

struct Restore {
    const char* name;
    std::string before = "";  // utility calls that set the panel up
    std::string faults = "";
    Lines options = {};
    std::string dump;   // what stands below the root
    std::string calls;  // all that was run, without the last command
    std::string result = ::result();
};

inline std::string dumpOf(const std::string& inside) {
    return "<migration-dump>" + inside + "</migration-dump>";
}

inline Lines deployOptions(Lines more = {}) {
    Lines all{"--deploy-dump", "--no-repository", "--session-path", Sandbox::sessionPath()};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

inline void prepare(Sandbox& box, const std::string& dump, const std::string& before = "",
                    const std::string& faults = "") {
    if (!before.empty()) box.setup(before);
    if (!faults.empty()) box.faults(faults);
    box.writeDump(dumpOf(dump));
}

inline void runAndExpect(Sandbox& box, const Restore& restore) {
    prepare(box, restore.dump, restore.before, restore.faults);
    box.succeeds(deployOptions(restore.options));
    EXPECT_EQ(callsOf(box), restore.calls + kStatistics);
    expectResult(box, restore.result);
    expectNoPasswordInArguments(box);
}

inline std::string restoreName(const ::testing::TestParamInfo<Restore>& row) {
    return row.param.name;
}

inline void PrintTo(const Restore& restore, std::ostream* out) { *out << restore.name; }
