#include "restore/toolbox/panel_command.h"

#include "commons/files.h"
#include "content/unsafe_name.h"
#include "report/guard.h"

namespace zelvo {

CliExec panelCommand(const std::string& utility, std::initializer_list<std::string> head) {
    CliExec cmd(files::getDirectCliUtilityPath(utility));
    for (const std::string& argument : head) {
        cmd << argument;
    }
    return cmd;
}

CliExec commandOn(const std::string& utility, const std::string& verb, const std::string& name) {
    return panelCommand(utility, {verb, requireNoOption(name, "an object")});
}

CliExec createCommand(const std::string& utility, const std::string& name) {
    return commandOn(utility, "--create", name);
}

CliExec updateCommand(const std::string& utility, const std::string& name) {
    return commandOn(utility, "--update", name);
}

CliExec optionalUpdate(const std::string& utility, const std::string& name) {
    CliExec cmd = updateCommand(utility, name);
    cmd.expectOptions();
    return cmd;
}

void runPanelCommand(const std::string& utility, std::initializer_list<std::string> arguments) {
    panelCommand(utility, arguments).exec();
}

void execOrReport(CliExec& command) {
    if (command.exec(std::nothrow) != 0) {
        command.reportError();
    }
}

void execOrLog(CliExec command) {
    debugLogged([&command] { command.exec(); });
}

bool askWhether(const std::string& utility, std::initializer_list<std::string> arguments) {
    CliExec cmd = panelCommand(utility, arguments);
    const bool isSo = cmd.exec(std::nothrow) == 0;
    if (!cmd.hasAnswered()) {
        cmd.reportError();
    }
    return isSo;
}

std::string askPanel(const std::string& utility, std::initializer_list<std::string> arguments) {
    CliExec cmd = panelCommand(utility, arguments);
    if (cmd.exec(std::nothrow) != 0 && cmd.stdout.empty()) {
        // There is nothing to read, and the utility has said why.
        cmd.reportError();
    }
    return cmd.stdout;
}

}  // namespace zelvo
