#include <sys/stat.h>

#include <iostream>

#include "commons/process_start.h"
#include "commons/signals.h"
#include "commons/termination.h"
#include "lib/read_configuration.h"
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

zelvo::Report run(const zelvo::Settings& settings, zelvo::Command command) {
    zelvo::Narrator narrator(settings.isVerbose);
    try {
        return command(settings, narrator);
    } catch (const zelvo::ExTraceable& failure) {
        zelvo::Report report = zelvo::Report::ofOne("", {});
        report.fail(withSubject(settings, failure.what()));
        return report;
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

}  // namespace

int main(int argc, char** argv) {
    zelvo::startProcess();
    // Backups hold passwords.
    umask(S_IRWXG | S_IRWXO);
    zelvo::installKillHandler();
    // Without the configuration file every look-up falls back on its default.
    autoprepend();
    try {
        return runCommandLine(argc, argv);
    } catch (const zelvo::UsageError& failure) {
        std::cerr << "restorectl: " << failure.what() << '\n';
        return zelvo::kWrongUsage;
    } catch (const std::exception& failure) {
        std::cerr << "restorectl: " << failure.what() << '\n';
    } catch (...) {
        std::cerr << "restorectl: an unknown failure\n";
    }
    return zelvo::kFailure;
}
