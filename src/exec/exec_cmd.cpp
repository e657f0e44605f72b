#include "exec/exec_cmd.h"

#include <cerrno>

#include "lib/shell_quote.h"

namespace zelvo {

namespace {

// One stream of a failed command, as a part of the failure's text.
std::string prepare_output_string(const std::string& name, const std::string& text) {
    if (text.empty()) {
        return "";
    }
    return (boost::format("%1% is\n%2%%3%") % name % text % (text.ends_with('\n') ? "" : "\n"))
        .str();
}

// Appends one stream of a finished command to the report.
void reportStream(std::string& report, const std::string& name, const std::string& text) {
    if (text.empty()) {
        report.append(" \nNo output on ").append(name).append(" were performed by the utility");
    } else {
        report.append(" \nThe output on ").append(name).append(" was: \n").append(text);
    }
}

}  // namespace

ExecCmd::ExecCmd(const std::string& path) : utility(path) { args.push_back(path); }

ExecCmd& ExecCmd::operator<<(const std::string& argument) {
    args.push_back(argument);
    return *this;
}

ExecCmd& ExecCmd::operator<<(const char* argument) {
    args.push_back(argument);
    return *this;
}

void ExecCmd::setEnv(const std::string& name, const std::string& value) { env[name] = value; }

int ExecCmd::execCmdLine() {
    started = true;
    bool hasStarted = true;
    retCode = forkExecvGetInOutErrSuidEnv(stdin, stdout, stderr, utility, args, uid, env,
                                          confinement, &hasStarted);
    savedErrno = errno;
    couldNotStart = !hasStarted;
    finished = true;
    return retCode;
}

int ExecCmd::exec() {
    if (execCmdLine() != 0) {
        reportError();
    }
    return retCode;
}

int ExecCmd::exec(std::nothrow_t) noexcept { return execCmdLine(); }

std::string ExecCmd::getString() const {
    std::string text;
    for (std::size_t i = 0; args[i] != nullptr; ++i) {
        text += (i == 0 ? "" : " ") + sh_quote(args[i]);
    }
    return text;
}

void ExecCmd::reportError() const {
    throw EXC(ExecCmd::Failed) % getString() % retCode % prepare_output_string("Stdin", stdin) %
        prepare_output_string("Stdout", stdout) % prepare_output_string("Stderr", stderr);
}

std::string getReport(const ExecCmd& command) {
    constexpr std::size_t kWords = 160;
    std::string report;
    // An output may be megabytes, of which no more copies are made than need be.
    report.reserve(kWords + command.stdout.size() + command.stderr.size());
    report += "The return code was ";
    reportStream(report, "STDOUT", command.stdout);
    reportStream(report, "STDERR", command.stderr);
    return report;
}

}  // namespace zelvo
