#include "deployer/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

zelvo::config parse(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "deployer");
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    zelvo::config settings;
    zelvo::parse_options(static_cast<int>(arguments.size()), argv.data(), settings);
    return settings;
}

TEST(Options, FillTheirFields) {
    const zelvo::config settings =
        parse({"--domain-template=t", "--session-path", "/s", "--agent-name", "--help",
               "--backup-user", "u", "--backup-user-type", "", "--repository-url", "url",
               "--repository-login", "l", "--repository-pwd", "p"});
    const std::string fields[] = {settings.domainTemplate,  settings.sessionPath,
                                  settings.agentName,       settings.backupUser,
                                  settings.backupUserType,  settings.repositoryUrl,
                                  settings.repositoryLogin, settings.repositoryPwd};
    EXPECT_THAT(fields, testing::ElementsAre("t", "/s", "--help", "u", "", "url", "l", "p"));
    EXPECT_EQ(zelvo::kNoAction, zelvo::action);
}

}  // namespace
