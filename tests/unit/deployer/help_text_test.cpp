#include "deployer/help_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace {

// A line that "$" does not end has blanks behind it up to the 78th column; "~" is a tab.
constexpr char kText[] = R"(deployer. Zelvo Migration Manager.

 Usage:

    deployer --translate-dump --session-path <dir> --agent-name <agent>
        [--verbose]

    deployer --deploy-dump --session-path <dir>
        [--domain-template <template>] [--notify] [--backup-user <login>]
        [--backup-user-type=<admin|client|domain-admin>]$
        [--verbose]

    deployer --get-agents-list [--verbose]

    deployer --delete-session --session-path <dir> [--verbose]


 Available commands:

    --translate-dump    Translates dump to the canonical form
    --deploy-dump       Deploy Zelvo XML dump
    --delete-session    Deletes session from the local host
    --get-agents-list   Returns XML description of available migration agents
    --help              This help page


 Available options:

    --session-path    <directory>  Specifies path to working session
                                   on the localhost
    --repository-url  <directory>  Specifies path to dump directory
~~~~~~~~~(local path or url)                        $
    --repository-login <login>     Specifies login to access to repository
    --repository-pwd   <password>  Specifies login's password~~~~   $
~~~~~~~~~to access to repository~~~~~   $
    --agent-name      <agent>      The name of migration agent
    --domain-template <template>   Zelvo domain template to use upon domains
                                   deployment
    --notify                       Send email notification to accounts created
                                   upon deployment
    --backup-user     <login>      Login of Zelvo user, whose privileges
                                   should be used upon deployment
    --backup-user-type <admin|client|domain-admin>
                                   Level of deployment: deployment on the
                                   server level, on the client or domain-level
                                   user
    --suspend                      Suspend domains during restore~~~   $
    --verbose                      Output additional debug information
    --debug                        Output all debug information

)";

// Catches: a blank or a tab too few in what callers compare to the byte.
TEST(HelpText, IsTheOneThatCallersCompareWith) {
    std::string expected;
    std::istringstream text(kText);
    for (std::string line; std::getline(text, line); expected += line + "\n") {
        std::replace(line.begin(), line.end(), '~', '\t');
        if (line.ends_with('$')) {
            line.pop_back();
        } else {
            line.resize(78, ' ');
        }
    }
    EXPECT_EQ(expected, zelvo::helpText);
}

}  // namespace
