#include "restore/toolbox/shells.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/filesystem/path.hpp>
#include <map>
#include <sstream>
#include <vector>

#include "commons/files.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

std::vector<std::string> listShells() {
    std::vector<std::string> shells;
    debugLogged([&shells] {
        CliExec cmd = panelCommand("domain", {"-s"});
        cmd.exec();
        std::istringstream items(cmd.stdout);
        for (std::string item; items >> item;) {
            if (item.find('/') != std::string::npos) {
                shells.push_back(item);
            }
        }
    });
    return shells;
}

std::string bareName(const std::string& shell) {
    return boost::to_lower_copy(boost::filesystem::path(shell).stem().string());
}

std::string findShell(const std::string& asked) {
    const std::vector<std::string> shells = listShells();
    for (const std::string& shell : shells) {
        if (shell == asked) {
            return shell;
        }
    }
    for (const std::string& shell : shells) {
        if (bareName(shell) == bareName(asked)) {
            theDebugLog->log("Found similar shell: " + shell);
            return shell;
        }
    }
    return files::getChrootShellFileName();
}

}  // namespace

std::string fixShell(const std::string& shell) {
    static std::map<std::string, std::string> known_shells;
    const auto known = known_shells.find(shell);
    if (known != known_shells.end()) {
        theDebugLog->log("Shell mapped: " + shell + " => " + known->second);
        return known->second;
    }
    return known_shells[shell] = findShell(shell);
}

}  // namespace zelvo
