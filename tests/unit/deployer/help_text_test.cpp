#include "deployer/help_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace {

// A line as it must be, without its line feed.
std::string exact(const std::string& line) { return line; }

// A line with blanks behind it up to the 78th column.
std::string padded(std::string line) {
    line.resize(std::max<std::size_t>(line.size(), 78), ' ');
    return line;
}

std::string tabs(std::size_t count) { return std::string(count, '\t'); }

std::string blanks(std::size_t count) { return std::string(count, ' '); }

const std::vector<std::string> kLines = {
    padded("deployer. Zelvo Migration Manager."),
    padded(""),
    padded(" Usage:"),
    padded(""),
    padded("    deployer --translate-dump --session-path <dir> --agent-name <agent>"),
    padded("        [--verbose]"),
    padded(""),
    padded("    deployer --deploy-dump --session-path <dir>"),
    padded("        [--domain-template <template>] [--notify] [--backup-user <login>]"),
    exact("        [--backup-user-type=<admin|client|domain-admin>]"),
    padded("        [--verbose]"),
    padded(""),
    padded("    deployer --get-agents-list [--verbose]"),
    padded(""),
    padded("    deployer --delete-session --session-path <dir> [--verbose]"),
    padded(""),
    padded(""),
    padded(" Available commands:"),
    padded(""),
    padded("    --translate-dump    Translates dump to the canonical form"),
    padded("    --deploy-dump       Deploy Zelvo XML dump"),
    padded("    --delete-session    Deletes session from the local host"),
    padded("    --get-agents-list   Returns XML description of available migration agents"),
    padded("    --help              This help page"),
    padded(""),
    padded(""),
    padded(" Available options:"),
    padded(""),
    padded("    --session-path    <directory>  Specifies path to working session"),
    padded("                                   on the localhost"),
    padded("    --repository-url  <directory>  Specifies path to dump directory"),
    exact(tabs(9) + "(local path or url)" + blanks(24)),
    padded("    --repository-login <login>     Specifies login to access to repository"),
    exact("    --repository-pwd   <password>  Specifies login's password" + tabs(4) + blanks(3)),
    exact(tabs(9) + "to access to repository" + tabs(5) + blanks(3)),
    padded("    --agent-name      <agent>      The name of migration agent"),
    padded("    --domain-template <template>   Zelvo domain template to use upon domains"),
    padded("                                   deployment"),
    padded("    --notify                       Send email notification to accounts created"),
    padded("                                   upon deployment"),
    padded("    --backup-user     <login>      Login of Zelvo user, whose privileges"),
    padded("                                   should be used upon deployment"),
    padded("    --backup-user-type <admin|client|domain-admin>"),
    padded("                                   Level of deployment: deployment on the"),
    padded("                                   server level, on the client or domain-level"),
    padded("                                   user"),
    exact("    --suspend                      Suspend domains during restore" + tabs(3) +
          blanks(3)),
    padded("    --verbose                      Output additional debug information"),
    padded("    --debug                        Output all debug information"),
    padded(""),
};

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char byte : text) {
        if (byte == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += byte;
        }
    }
    return lines;
}

TEST(HelpText, IsTheOneThatCallersCompareWith) {
    const std::vector<std::string> lines = linesOf(zelvo::helpText);
    ASSERT_EQ(kLines.size() + 1, lines.size());
    for (std::size_t i = 0; i < kLines.size(); ++i) {
        EXPECT_EQ(kLines[i], lines[i]) << "line " << i + 1;
    }
    // The last line is ended too.
    EXPECT_EQ("", lines.back());
}

}  // namespace
