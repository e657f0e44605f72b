#include "deployer/options.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using zelvo::action;
using zelvo::config;

// The settings and the action that a command line gives, and what was complained of.
struct Parsed {
    config settings;
    std::string complaint;
};

Parsed parse(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "deployer");
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    action = zelvo::kNoAction;
    Parsed parsed;
    testing::internal::CaptureStderr();
    zelvo::parse_options(static_cast<int>(arguments.size()), argv.data(), parsed.settings);
    parsed.complaint = testing::internal::GetCapturedStderr();
    return parsed;
}

struct ActionCase {
    std::vector<std::string> arguments;
    int action;
};

class Action : public testing::TestWithParam<ActionCase> {};

TEST_P(Action, IsTheOneOptionThatChoosesOne) {
    parse(GetParam().arguments);
    EXPECT_EQ(GetParam().action, action);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, Action,
    testing::Values(ActionCase{{}, 0}, ActionCase{{"--session-path", "/s", "--verbose"}, 0},
                    ActionCase{{"--translate-dump"}, 1}, ActionCase{{"--deploy-dump"}, 2},
                    ActionCase{{"--get-agents-list"}, 3}, ActionCase{{"--help"}, 4},
                    ActionCase{{"--delete-session"}, 5}, ActionCase{{"--del"}, 5},
                    ActionCase{{"--help", "--deploy-dump"}, -1},
                    ActionCase{{"--deploy-dump", "--deploy-dump"}, -1},
                    ActionCase{{"--help", "--help", "--help"}, -1},
                    ActionCase{{"--", "--help"}, 0}));

TEST(Options, FillTheirFields) {
    const config settings = parse({"--domain-template=t",
                                   "--session-path",
                                   "/s",
                                   "--agent-name",
                                   "a",
                                   "--backup-user",
                                   "u",
                                   "--backup-user-type",
                                   "client",
                                   "--repository-url",
                                   "url",
                                   "--repository-login",
                                   "l",
                                   "--repository-pwd",
                                   "p",
                                   "--no-repository",
                                   "--notify",
                                   "--verbose",
                                   "--debug",
                                   "--skip-xsd",
                                   "--suspend"})
                                .settings;
    EXPECT_EQ("t", settings.domainTemplate);
    EXPECT_EQ("/s", settings.sessionPath);
    EXPECT_EQ("a", settings.agentName);
    EXPECT_EQ("u", settings.backupUser);
    EXPECT_EQ("client", settings.backupUserType);
    EXPECT_EQ("url", settings.repositoryUrl);
    EXPECT_EQ("l", settings.repositoryLogin);
    EXPECT_EQ("p", settings.repositoryPwd);
    EXPECT_TRUE(settings.noRepository && settings.notify && settings.verbose && settings.debug &&
                settings.skipXsd && settings.suspend);
}

TEST(Options, SetNoFlagButTheirOwn) {
    const bool config::*const flags[] = {&config::noRepository, &config::notify,  &config::verbose,
                                         &config::debug,        &config::skipXsd, &config::suspend};
    const char* const names[] = {"--no-repository", "--notify",   "--verbose",
                                 "--debug",         "--skip-xsd", "--suspend"};
    for (std::size_t given = 0; given < std::size(names); ++given) {
        const config settings = parse({names[given]}).settings;
        for (std::size_t flag = 0; flag < std::size(flags); ++flag) {
            EXPECT_EQ(flag == given, settings.*flags[flag]) << names[given];
        }
    }
}

TEST(Options, KeepTheLastValueAsItStands) {
    EXPECT_EQ(" /b=c ",
              parse({"--session-path", "/a", "--session-path= /b=c "}).settings.sessionPath);
    EXPECT_EQ("", parse({"--session-path", "/a", "--session-path="}).settings.sessionPath);
    // A value may look like an option.
    EXPECT_EQ("--help", parse({"--agent-name", "--help"}).settings.agentName);
    EXPECT_EQ(zelvo::kNoAction, action);
}

TEST(Options, PassOverWhatTheyDoNotKnow) {
    const Parsed parsed =
        parse({"stray", "--unknown", "-v", "--no", "--deploy-dump", "stray", "--session-path"});
    EXPECT_EQ(zelvo::kDeployDump, action);
    EXPECT_FALSE(parsed.settings.verbose);
    EXPECT_NE(std::string::npos, parsed.complaint.find("unknown"));
    EXPECT_NE(std::string::npos, parsed.complaint.find("session-path"));
}

}  // namespace
