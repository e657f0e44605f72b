// The stand-in for every utility of the panel. Which one it is to be, the name tells by which it is
// called.

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "call.h"
#include "files.h"
#include "panel/model.h"
#include "panel/panel.h"
#include "paths.h"
#include "rules.h"
#include "utilities.h"

extern char** environ;

namespace sandbox {

namespace {

constexpr int kBadSandbox = 99;  // the sandbox itself is at fault, not the call

Call receiveCall(int argc, char** argv) {
    Call call;
    call.utility = utilityName(argv[0]);
    call.arguments.assign(argv + 1, argv + argc);
    for (const std::string& name : callVariables()) {
        if (const char* value = std::getenv(name.c_str())) {
            call.environment.emplace_back(name, value);
        }
    }
    return call;
}

// A person at a terminal is not asked for input.
std::string readInput() {
    if (isatty(STDIN_FILENO) == 1) {
        return {};
    }
    return readAll(STDIN_FILENO);
}

// Each call adds one byte, so its number is the size of the file: calls side by side need no lock
// to count themselves.
long countCall() { return appendToFile(stateFile(kCallsFile), "."); }

Answer refuse(const Call& call, const std::string& why) {
    return {1, "", call.utility + ": " + why + "\n"};
}

Answer serve(const Call& call) {
    if (fileExists(stateFile(kNoModelFile))) {
        return serveWithoutModel(call);
    }
    Model model(stateFile(kModelFile));
    try {
        Answer answer = serveFromModel(model, call);
        model.commit();
        return answer;
    } catch (const Refusal& refusal) {
        return refuse(call, refusal.what());
    }
}

void reply(const Answer& answer) {
    writeAll(STDOUT_FILENO, answer.out);
    writeAll(STDERR_FILENO, answer.err);
}

// ---- misbehaviour --------------------------------------------------------

void sleepFor(long milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

// Leaves a grandchild behind that holds all descriptors for a while.
void leaveGrandchild(long milliseconds) {
    if (fork() == 0) {
        sleepFor(milliseconds);
        _exit(0);
    }
}

bool isRunByGate() {
    const std::string link = "/proc/" + std::to_string(getppid()) + "/exe";
    char target[4096];
    const ssize_t size = readlink(link.c_str(), target, sizeof target);
    return size > 0 && utilityName({target, static_cast<std::size_t>(size)}) == "cligate";
}

// The restore is the parent, or, behind the gate, the command of the sandbox.
pid_t restorePid() {
    if (!isRunByGate()) {
        return getppid();
    }
    const auto text = readFile(stateFile(kCommandPidFile));
    const long pid = text ? std::strtol(text->c_str(), nullptr, 10) : 0;
    if (pid <= 1) {
        throw std::runtime_error("nobody knows the process of the restore");
    }
    return static_cast<pid_t>(pid);
}

void print(long bytes) {
    const std::string text(static_cast<std::size_t>(bytes), 'x');
    writeAll(STDOUT_FILENO, text);
    writeAll(STDERR_FILENO, text);
}

void dieBy(int number) {
    std::signal(number, SIG_DFL);
    raise(number);
}

void perform(const Action& action) {
    if (action.name == "after" || action.name == "ignore-stdin") {
        return;  // settled already
    }
    if (action.name == "exit") {
        _exit(static_cast<int>(action.number()));
    }
    if (action.name == "signal") {
        return dieBy(signalNumber(action.value));
    }
    if (action.name == "sleep") {
        return sleepFor(action.number());
    }
    if (action.name == "stdout") {
        return writeAll(STDOUT_FILENO, action.value);
    }
    if (action.name == "stderr") {
        return writeAll(STDERR_FILENO, action.value);
    }
    if (action.name == "print") {
        return print(action.number());
    }
    if (action.name == "background") {
        return leaveGrandchild(action.number());
    }
    if (action.name == "signal-parent") {
        if (kill(restorePid(), signalNumber(action.value)) != 0) {
            failWithErrno("cannot signal");
        }
        return;
    }
    throw std::runtime_error("unknown fault action '" + action.name + "'");
}

void misbehave(const Rule& rule) {
    for (const Action& action : rule.actions) {
        perform(action);
    }
}

// ---- the two ways to be run ----------------------------------------------

int runUtility(int argc, char** argv) {
    Call call = receiveCall(argc, argv);
    if (!fileExists(kStateDir)) {
        throw std::runtime_error(call.utility + " works inside the sandbox only");
    }
    const long number = countCall();
    const auto rules = parseRules(readFile(stateFile(kFaultsFile)).value_or(""), "call");
    std::vector<std::string> words{call.utility};
    words.insert(words.end(), call.arguments.begin(), call.arguments.end());
    const Rule* rule = findRule(rules, number, words);

    if (rule != nullptr && rule->has("ignore-stdin")) {
        close(STDIN_FILENO);
    } else {
        call.input = readInput();
    }
    appendToFile(stateFile(kJournalFile), formatCall(call) + "\n");

    const bool after = rule != nullptr && rule->has("after");
    if (rule != nullptr && !after) {
        misbehave(*rule);
    }
    const Answer answer = serve(call);
    reply(answer);
    if (after) {
        misbehave(*rule);
    }
    return answer.status;
}

// Applies a list of calls to the model in one transaction, without journal and without faults. The
// first refusal ends it, and nothing of the list stays.
int replay(const char* path) {
    const auto text = readFile(path);
    if (!text) {
        throw std::runtime_error(std::string(path) + " does not exist");
    }
    Model model(stateFile(kModelFile));
    int line = 0;
    for (std::size_t start = 0; start < text->size();) {
        const std::size_t end = std::min(text->find('\n', start), text->size());
        const std::string one = text->substr(start, end - start);
        start = end + 1;
        ++line;
        const std::size_t first = one.find_first_not_of(" \t\r");
        if (first == std::string::npos || one[first] == '#') {
            continue;
        }
        try {
            const Answer answer = serveFromModel(model, parseCall(one));
            if (answer.status != 0) {
                throw std::runtime_error("status " + std::to_string(answer.status));
            }
        } catch (const std::runtime_error& e) {
            throw std::runtime_error(std::string(path) + ":" + std::to_string(line) + ": " +
                                     e.what());
        }
    }
    model.commit();
    return 0;
}

}  // namespace

}  // namespace sandbox

int main(int argc, char** argv) {
    try {
        if (argc == 3 && std::strcmp(argv[1], "--replay") == 0 &&
            sandbox::utilityName(argv[0]) == "panel-utility") {
            return sandbox::replay(argv[2]);
        }
        return sandbox::runUtility(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "sandbox: %s\n", e.what());
        return sandbox::kBadSandbox;
    }
}
