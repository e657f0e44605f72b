#include <sys/stat.h>

#include <csignal>
#include <iostream>

#include "commons/process_start.h"
#include "commons/signals.h"
#include "commons/termination.h"
#include "lib/read_configuration.h"
#include "repository/path_guard.h"
#include "restorectl/command_line.h"
#include "restorectl/narrator.h"
#include "restorectl/places.h"

namespace {

// Prints what came of a command; returns the exit status.
int print(const zelvo::Report& report, bool asJson) {
    if (asJson) {
        report.printJson(std::cout);
    } else {
        report.printTable(std::cout);
    }
    for (const std::string& failure : report.failures()) {
        std::cerr << "restorectl: " << zelvo::printable(failure, "\n    ") << '\n';
    }
    if (!std::cout.flush()) {
        std::cerr << "restorectl: standard output could not be written\n";
        return zelvo::kFailure;
    }
    return report.hasFailed() ? zelvo::kFailure : zelvo::kSuccess;
}

// The reason alone may not name what the command was about.
std::string withSubject(const zelvo::Settings& settings, const std::string& reason) {
    const std::string subject =
        settings.paths.size() == 1 ? settings.paths.front() : settings.other.url;
    const bool isNamed = reason.find(subject) != std::string::npos;
    return isNamed ? reason : subject + ": " + reason;
}

zelvo::Report failed(const std::string& reason) {
    zelvo::Report report = zelvo::Report::ofOne("", {});
    report.fail(reason);
    return report;
}

zelvo::Report run(zelvo::Settings& settings, zelvo::Command command) {
    zelvo::Narrator narrator(settings.isVerbose);
    try {
        zelvo::readPlaces(settings);
        // Of "./x" what stands above would seem to be another backup.
        for (std::string& path : settings.paths) {
            path = zelvo::normalPath(path);
        }
        return command(settings, narrator);
    } catch (const zelvo::ExTraceable& failure) {
        return failed(withSubject(settings, failure.what()));
    } catch (const zelvo::UsageError&) {
        throw;
    } catch (const std::exception& failure) {
        return failed(failure.what());
    }
}

int runCommandLine(int argc, char** argv) {
    zelvo::Settings settings;
    zelvo::Command command = nullptr;
    if (const auto status = zelvo::parseCommandLine(argc, argv, settings, command)) {
        return *status;
    }
    return print(run(settings, command), settings.asJson);
}

// A program that nohup(1) started is to outlive its terminal.
void installHandlers() {
    struct sigaction hangup = {};
    sigaction(SIGHUP, nullptr, &hangup);
    zelvo::installKillHandler();
    if (hangup.sa_handler == SIG_IGN) {
        signal(SIGHUP, SIG_IGN);
    }
}

}  // namespace

int main(int argc, char** argv) {
    zelvo::startProcess();
    // Backups hold passwords.
    umask(S_IRWXG | S_IRWXO);
    installHandlers();
    // Without the configuration file every look-up falls back on its default.
    autoprepend();
    try {
        return runCommandLine(argc, argv);
    } catch (const zelvo::UsageError& failure) {
        std::cerr << "restorectl: " << zelvo::printable(failure.what(), " ") << '\n';
        return zelvo::kWrongUsage;
    } catch (const std::exception& failure) {
        std::cerr << "restorectl: " << zelvo::printable(failure.what(), " ") << '\n';
    } catch (...) {
        std::cerr << "restorectl: an unknown failure\n";
    }
    return zelvo::kFailure;
}
