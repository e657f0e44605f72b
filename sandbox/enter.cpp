// sandbox-enter [options] -- COMMAND [ARGUMENT]...: runs a command on a machine that seems to have
// the panel, and changes nothing of this one.

#include <getopt.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "box.h"
#include "files.h"
#include "paths.h"

namespace sandbox {

namespace {
namespace fs = std::filesystem;

constexpr int kBadSandbox = 99;
constexpr char kUsage[] =
    "usage: enter [options] -- COMMAND [ARGUMENT]...\n"
    "  --state DIR       keep the panel's state in DIR (default: a directory that is removed)\n"
    "  --setup FILE      first apply the utility calls of FILE, one a line\n"
    "  --gate            with the CLI gate\n"
    "  --no-model        no memory: every utility succeeds\n"
    "  --accept-unknown  utilities that the panel does not know succeed\n"
    "  --no-conf         without /etc/qrd/qrd.conf\n"
    "  --clients         database dumps are loaded by stand-ins, into nothing\n";

struct Options {
    std::string state;
    bool temporary = false;
    std::string setup;
    bool gate = false;
    bool model = true;
    bool acceptUnknown = false;
    bool configuration = true;
    bool clients = false;
    char** command = nullptr;
};

[[noreturn]] void failUsage() {
    std::fputs(kUsage, stderr);
    std::exit(kBadSandbox);
}

Options parseOptions(int argc, char** argv) {
    constexpr option kOptions[] = {
        {"state", required_argument, nullptr, 's'},    {"setup", required_argument, nullptr, 'u'},
        {"gate", no_argument, nullptr, 'g'},           {"no-model", no_argument, nullptr, 'm'},
        {"accept-unknown", no_argument, nullptr, 'a'}, {"no-conf", no_argument, nullptr, 'c'},
        {"clients", no_argument, nullptr, 'd'},        {nullptr, 0, nullptr, 0}};
    Options options;
    for (int key; (key = getopt_long(argc, argv, "+", kOptions, nullptr)) != -1;) {
        switch (key) {
            case 's':
                options.state = optarg;
                break;
            case 'u':
                options.setup = optarg;
                break;
            case 'g':
                options.gate = true;
                break;
            case 'm':
                options.model = false;
                break;
            case 'a':
                options.acceptUnknown = true;
                break;
            case 'c':
                options.configuration = false;
                break;
            case 'd':
                options.clients = true;
                break;
            default:
                failUsage();
        }
    }
    if (optind == argc) {
        failUsage();
    }
    options.command = argv + optind;
    return options;
}

void chooseState(Options& options) {
    if (options.state.empty()) {
        std::string name =
            std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/panel.XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            failWithErrno("cannot make a directory like " + name);
        }
        options.state = name;
        options.temporary = true;
    }
    fs::create_directories(options.state);
    options.state = fs::canonical(options.state);
}

// ---- processes -----------------------------------------------------------

pid_t child = 0;  // who gets the signals that are meant for the command

void passOn(int number) {
    if (child > 0) {
        kill(child, number);
    }
}

void passSignalsOn() {
    struct sigaction action {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2}) {
        sigaction(number, &action, nullptr);
    }
}

// The handler is in place before the child is, so the child takes it off.
void forgetSignals() {
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2}) {
        std::signal(number, SIG_DFL);
    }
}

// The child ends with its parent, however that one ends.
template <typename Body>
pid_t startChild(Body body) {
    const pid_t parent = getpid();
    const pid_t pid = fork();
    if (pid < 0) {
        failWithErrno("cannot fork");
    }
    if (pid > 0) {
        return pid;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(kBadSandbox);
    }
    try {
        body();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "sandbox: %s\n", e.what());
    }
    _exit(kBadSandbox);
}

int waitFor(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) {
            failWithErrno("cannot wait");
        }
    }
    return status;
}

// Ends as the child did.
[[noreturn]] void endLike(int status) {
    if (WIFSIGNALED(status)) {
        std::signal(WTERMSIG(status), SIG_DFL);
        raise(WTERMSIG(status));
    }
    _exit(WEXITSTATUS(status));
}

void runCommand(const Options& options) {
    forgetSignals();
    const std::string file = stateFile(kCommandPidFile);
    unlink(file.c_str());
    appendToFile(file, std::to_string(getpid()) + "\n");
    execvp(options.command[0], options.command);
    failWithErrno(std::string("cannot run ") + options.command[0]);
}

// ---- inside --------------------------------------------------------------

void applySetup(const Options& options, const std::string& utility) {
    const pid_t pid = startChild([&] {
        execl(utility.c_str(), utility.c_str(), "--replay", options.setup.c_str(), nullptr);
        failWithErrno("cannot run " + utility);
    });
    const int status = waitFor(pid);
    if (status != 0) {
        throw std::runtime_error("the set-up failed");
    }
}

pid_t startGate(const std::string& program) {
    int ends[2];
    if (pipe(ends) != 0) {
        failWithErrno("cannot make a pipe");
    }
    const Fd ready(ends[0]);
    Fd theirs(ends[1]);
    const pid_t gate = startChild([&] {
        close(ready.get());
        execl(program.c_str(), program.c_str(), std::to_string(theirs.get()).c_str(), nullptr);
        failWithErrno("cannot run " + program);
    });
    theirs = Fd();
    if (readAll(ready.get()).empty()) {
        throw std::runtime_error("the gate did not start");
    }
    return gate;
}

void runWithGate(const Options& options, const std::string& program) {
    const pid_t gate = startGate(program);
    child = startChild([&] { runCommand(options); });
    const int status = waitFor(child);
    kill(gate, SIGTERM);
    waitFor(gate);
    endLike(status);
}

void makeEmptyFile(const std::string& file) {
    if (!fileExists(file)) {
        appendToFile(file, "");
    }
}

void setModelMode(const Options& options) {
    const std::string file = stateFile(kNoModelFile);
    if (options.model) {
        unlink(file.c_str());
    } else {
        makeEmptyFile(file);
    }
    if (options.acceptUnknown) {
        makeEmptyFile(stateFile(kAcceptUnknownFile));
    }
}

void runInBox(const Options& options) {
    const std::string programs = fs::read_symlink("/proc/self/exe").parent_path();
    enterBox({options.state, programs, options.configuration, options.clients});
    setModelMode(options);
    if (!options.setup.empty()) {
        applySetup(options, programs + "/panel-utility");
    }
    if (options.gate) {
        runWithGate(options, programs + "/cligate");
    } else {
        runCommand(options);
    }
}

// The parent stays on the machine, so that it can remove what the box leaves.
[[noreturn]] void runAndRemoveState(const Options& options) {
    passSignalsOn();
    child = startChild([&] { runInBox(options); });
    const int status = waitFor(child);
    removeState(options.state);
    endLike(status);
}

}  // namespace

}  // namespace sandbox

int main(int argc, char** argv) {
    try {
        sandbox::Options options = sandbox::parseOptions(argc, argv);
        sandbox::chooseState(options);
        if (!options.setup.empty()) {
            options.setup = std::filesystem::canonical(options.setup);
        }
        if (options.temporary) {
            sandbox::runAndRemoveState(options);
        }
        if (options.gate) {
            sandbox::passSignalsOn();
        }
        sandbox::runInBox(options);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "sandbox: %s\n", e.what());
    }
    return sandbox::kBadSandbox;
}
