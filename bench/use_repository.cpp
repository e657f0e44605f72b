// bench-use-repository DIRECTORY COMMAND...: does one thing with a repository, and nothing else.
// DIRECTORY: for the log. Runs in a panel. COMMAND:
//   put URL FILE NAME       brings a local file to a server, in active mode as a restore
//   get URL NAME FILE       fetches one
//   list PLACE GUID COUNT   lists the structured backups of a client, and requires that many
//   packed PLACE COUNT      lists the archives of the top directory
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "commons/session.h"
#include "report/debug_log.h"
#include "repository/repository.h"

namespace {

using zelvo::BackupInfo;
using Words = std::vector<std::string>;

void requireCount(const std::vector<BackupInfo>& backups, const std::string& count) {
    if (backups.size() != std::stoul(count)) {
        throw std::runtime_error("listed were " + std::to_string(backups.size()));
    }
}

void use(zelvo::tRepository& repository, const Words& command) {
    const std::string& what = command.at(0);
    std::vector<BackupInfo> backups;
    if (what == "put") {
        repository.Put(command.at(2), command.at(3));
    } else if (what == "get") {
        repository.Get(command.at(2), command.at(3));
    } else if (what == "list") {
        repository.BackupsList("client", command.at(2), "", backups);
        requireCount(backups, command.at(3));
    } else if (what == "packed") {
        repository.PackedBackupsList("", "", backups);
        requireCount(backups, command.at(2));
    } else {
        throw std::runtime_error("there is no command " + what);
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Words arguments(argv + 1, argv + argc);
        const zelvo::SessionLifetimeController session(arguments.at(0));
        const zelvo::DebugLogLifetimeController debugLog(false, false);
        const Words command(arguments.begin() + 1, arguments.end());
        zelvo::tRepository repository(command.at(1), "", "", "", false);
        use(repository, command);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-use-repository: %s\n", failure.what());
        return 1;
    }
}
