// The command line: one action and the settings of a run.
#pragma once

#include <string>

namespace zelvo {

// The values of action. A run does the one action that was asked for.
constexpr int kSeveralActions = -1;
constexpr int kNoAction = 0;
constexpr int kTranslateDump = 1;
constexpr int kDeployDump = 2;
constexpr int kGetAgentsList = 3;
constexpr int kHelp = 4;
constexpr int kDeleteSession = 5;

// What the command line asked for: kNoAction at start.
extern int action;

// The settings of a run, as the options gave them.
struct config {
    std::string domainTemplate;
    std::string sessionPath;
    std::string agentName;
    std::string backupUser;
    std::string backupUserType;
    std::string repositoryUrl;
    std::string repositoryLogin;
    std::string repositoryPwd;
    bool noRepository = false;
    bool notify = false;
    bool verbose = false;
    bool debug = false;
    bool skipXsd = false;
    bool suspend = false;
};

// Fills action and settings from a command line (argv[0] is the program) with getopt_long(3). Of a
// repeated value the last counts; a second action, the same one included, makes kSeveralActions.
// getopt_long complains on standard error of what it does not know; that and arguments that are no
// options are otherwise ignored. argv is permuted. Not reentrant, as getopt_long is not.
void parse_options(int argc, char** argv, config& settings);

}  // namespace zelvo
