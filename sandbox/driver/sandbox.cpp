#include "sandbox.h"

#include "plain_words.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

constexpr char kProgramsDir[] = TEST_PROGRAMS_DIR;
constexpr char kStateInside[] = "/opt/qrd/var/sandbox";

std::string makeStateDir() {
    std::string name =
        std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/deployer-test.XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
    return name;
}

// A test with a failure leaves its sandbox behind to be looked at.
bool mustKeep() {
    return std::getenv("KEEP") != nullptr || ::testing::Test::HasFailure() ||
           std::uncaught_exceptions() > 0;
}

void checkEnding(const ProcessResult& result) {
    EXPECT_FALSE(result.timedOut) << "the run took too long; standard error so far:\n"
                                  << result.err;
    const std::string report = findReport(result.err);
    EXPECT_TRUE(report.empty()) << report << "\n" << result.err;
}

}  // namespace

Sandbox::Sandbox() : state_(makeStateDir()) {}

Sandbox::~Sandbox() {
    if (mustKeep()) {
        GTEST_LOG_(INFO) << "the sandbox stays in " << state_;
        return;
    }
    std::error_code ignored;
    // A mount that shows the machine's own directories could not be removed
    // here, and then nothing must be.
    for (const char* name : {"/etc.host", "/opt.host", "/local.host"}) {
        const std::string path = state_ + name;
        if (rmdir(path.c_str()) != 0 && errno != ENOENT) {
            ADD_FAILURE() << "cannot remove " << path;
            return;
        }
    }
    fs::remove_all(state_, ignored);
}

void Sandbox::setup(std::string_view calls) {
    writeFile("setup", calls);
    hasSetup_ = true;
}

void Sandbox::faults(std::string_view rules) { writeFile("faults", rules); }

void Sandbox::gateFaults(std::string_view rules) { writeFile("gate-faults", rules); }

void Sandbox::environment(const std::string& name, const std::string& value) {
    environment_.push_back(name + "=" + value);
}

void Sandbox::writeDump(std::string_view text) { writeFile("session/restore.xml", text); }

void Sandbox::writeFile(const std::string& name, std::string_view text) {
    const fs::path path = fs::path(state_) / name;
    fs::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << text;
    if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string Sandbox::readFile(const std::string& name) const {
    std::ifstream stream(fs::path(state_) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool Sandbox::hasFile(const std::string& name) const { return fs::exists(fs::path(state_) / name); }

std::vector<std::string> Sandbox::enterCommand() {
    std::vector<std::string> command{std::string(kProgramsDir) + "/sandbox-enter", "--state",
                                     state_};
    if (gate_) command.emplace_back("--gate");
    if (!model_) command.emplace_back("--no-model");
    if (!configuration_) command.emplace_back("--no-conf");
    if (clients_) command.emplace_back("--clients");
    if (hasSetup_) {
        command.insert(command.end(), {"--setup", state_ + "/setup"});
        hasSetup_ = false;
    }
    command.emplace_back("--");
    // For instance "valgrind -q", to try the whole suite under it.
    if (const char* wrapper = std::getenv("TEST_WRAPPER")) {
        std::istringstream words(wrapper);
        for (std::string word; words >> word;) command.push_back(word);
    }
    return command;
}

std::vector<std::string> Sandbox::cleanEnvironment() const {
    std::vector<std::string> variables{"PATH=/usr/sbin:/usr/bin:/sbin:/bin"};
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name))
            variables.push_back(std::string(name) + "=" + value);
    }
    variables.insert(variables.end(), environment_.begin(), environment_.end());
    return variables;
}

Process Sandbox::start(const std::vector<std::string>& command) {
    std::vector<std::string> words = enterCommand();
    words.insert(words.end(), command.begin(), command.end());
    return Process(words, cleanEnvironment());
}

Process Sandbox::startDeployer(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{deployer()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return start(command);
}

ProcessResult Sandbox::runCommand(const std::vector<std::string>& command) {
    ProcessResult result = start(command).wait(patience_);
    checkEnding(result);
    return result;
}

ProcessResult Sandbox::run(const std::vector<std::string>& arguments) {
    ProcessResult result = startDeployer(arguments).wait(patience_);
    checkEnding(result);
    return result;
}

ProcessResult Sandbox::succeeds(const std::vector<std::string>& arguments) {
    ProcessResult result = run(arguments);
    EXPECT_EQ(result.exitStatus, 0) << "signal " << result.signal;
    EXPECT_EQ(result.err, "");
    return result;
}

ProcessResult Sandbox::failsWith(int status, std::string_view text,
                                 const std::vector<std::string>& arguments) {
    ProcessResult result = run(arguments);
    EXPECT_EQ(result.exitStatus, status) << "signal " << result.signal;
    EXPECT_NE(result.err.find(text), std::string::npos)
        << "standard error should hold '" << text << "' and is:\n"
        << result.err;
    return result;
}

ProcessResult Sandbox::deploy(const std::string& more) { return succeeds(deployment(more)); }

ProcessResult Sandbox::deployIn(const std::string& script, const std::string& more) {
    Lines command{"/bin/sh", "-c", "S=" + sessionPath() + "; " + script, deployer()};
    const Lines arguments = deployment(more);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runCommand(command);
}

std::string Sandbox::plainFile(const std::string& name) const {
    const PlainWords words(readFile("journal"), readFile("session/migration.result"),
                           readFile("session/migration.log"));
    return words.in(readFile(name));
}

Lines Sandbox::journal() const { return linesOf(plainFile("journal")); }

void Sandbox::forgetJournal() {
    // The numbers of the fault rules count from the start of the journal.
    std::error_code ignored;
    fs::remove(state_ + "/journal", ignored);
    fs::remove(state_ + "/calls", ignored);
}

std::string Sandbox::resultText() const { return plainFile("session/migration.result"); }

std::string Sandbox::statusText() const { return readFile("session/migration.status"); }

std::string Sandbox::logText() const { return plainFile("session/migration.log"); }

Lines Sandbox::gateLog() const { return linesOf(readFile("gate.log")); }

std::string Sandbox::panel() {
    return Process({std::string(kProgramsDir) + "/panel-show", state_}, cleanEnvironment())
        .wait(patience_)
        .out;
}

std::string Sandbox::sessionPath() { return std::string(kStateInside) + "/session"; }

std::string Sandbox::sessionDir() const { return state_ + "/session"; }

std::string Sandbox::deployer() { return std::string(kProgramsDir) + "/deployer"; }

std::string Sandbox::restorectl() { return std::string(kProgramsDir) + "/restorectl"; }

Lines Sandbox::deployment(const std::string& more) {
    Lines arguments{"--deploy-dump", "--no-repository", "--session-path", sessionPath()};
    std::istringstream words(more);
    for (std::string word; words >> word;) arguments.push_back(word);
    return arguments;
}
