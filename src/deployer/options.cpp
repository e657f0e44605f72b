#include "deployer/options.h"

#include <getopt.h>

#include <array>
#include <cstddef>
#include <variant>

namespace zelvo {

namespace {

// An option without a field of its own: it chooses the action.
struct ChoosesAction {};

struct OptionRow {
    const char* name;
    std::variant<ChoosesAction, std::string config::*, bool config::*> field;
};

// An option's place, counted from 1, is the value that getopt_long gives for it, and the first five
// are the values of action.
constexpr std::array kOptions = {
    OptionRow{"translate-dump", ChoosesAction()},
    OptionRow{"deploy-dump", ChoosesAction()},
    OptionRow{"get-agents-list", ChoosesAction()},
    OptionRow{"help", ChoosesAction()},
    OptionRow{"delete-session", ChoosesAction()},
    OptionRow{"notify", &config::notify},
    OptionRow{"domain-template", &config::domainTemplate},
    OptionRow{"session-path", &config::sessionPath},
    OptionRow{"repository-url", &config::repositoryUrl},
    OptionRow{"repository-login", &config::repositoryLogin},
    OptionRow{"repository-pwd", &config::repositoryPwd},
    OptionRow{"no-repository", &config::noRepository},
    OptionRow{"skip-xsd", &config::skipXsd},
    OptionRow{"agent-name", &config::agentName},
    OptionRow{"backup-user", &config::backupUser},
    OptionRow{"backup-user-type", &config::backupUserType},
    OptionRow{"verbose", &config::verbose},
    OptionRow{"debug", &config::debug},
    OptionRow{"suspend", &config::suspend},
};

using LongOptions = std::array<option, kOptions.size() + 1>;

LongOptions makeLongOptions() {
    LongOptions longOptions{};
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        const bool takesValue = std::holds_alternative<std::string config::*>(kOptions[i].field);
        longOptions[i] = {kOptions[i].name, takesValue ? required_argument : no_argument, nullptr,
                          static_cast<int>(i) + 1};
    }
    return longOptions;
}

// Takes one option. value: what getopt_long gave, 1 to the number of options; its argument, if it
// has one, is in optarg.
void takeOption(int value, config& settings) {
    const auto& field = kOptions[static_cast<std::size_t>(value) - 1].field;
    if (const auto* text = std::get_if<std::string config::*>(&field)) {
        settings.*(*text) = optarg;
    } else if (const auto* flag = std::get_if<bool config::*>(&field)) {
        settings.*(*flag) = true;
    } else {
        action = action == kNoAction ? value : kSeveralActions;
    }
}

}  // namespace

int action = kNoAction;

void parse_options(int argc, char** argv, config& settings) {
    const LongOptions longOptions = makeLongOptions();
    // 0 makes getopt_long forget an earlier walk.
    optind = 0;
    for (;;) {
        const int value = getopt_long(argc, argv, "", longOptions.data(), nullptr);
        if (value == -1) {
            return;
        }
        if (value <= static_cast<int>(kOptions.size())) {
            takeOption(value, settings);
        }
    }
}

}  // namespace zelvo
