// A machine of its own for each test: a panel, a session, and the real program
// run there.
//
//   Sandbox box;
//   box.setup("ipmanage -c 192.0.2.10 -type shared\n");
//   box.faults("match client --create bob: stderr 'no space\n'; exit 5\n");
//   box.writeDump("<migration-dump>...</migration-dump>");
//   box.deploy();
//   EXPECT_EQ(box.journal(), Lines({"... client --create bob ..."}));
#pragma once

#include "process.h"
#include "texts.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

class Sandbox {
  public:
    // The state lies in a directory of its own, which is gone at the end unless
    // the test failed or KEEP is set in the environment; then its name is told.
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    // ---- before a run ----

    // Utility calls, one a line as in the journal, for the next run to begin with.
    void setup(std::string_view calls);
    // Rules of misbehaviour for the utilities and for the gate; they replace
    // earlier ones. sandbox/README.md has the rules.
    void faults(std::string_view rules);
    void gateFaults(std::string_view rules);
    void withGate(bool on = true) { gate_ = on; }
    void withoutModel() { model_ = false; }
    void withoutConfiguration() { configuration_ = false; }
    // Database dumps are loaded by stand-ins.
    void withClients() { clients_ = true; }
    void environment(const std::string& name, const std::string& value);
    void patience(std::chrono::milliseconds time) { patience_ = time; }

    // The dump to deploy, in the session.
    void writeDump(std::string_view text);
    // Any file of the sandbox, by its path from statePath().
    void writeFile(const std::string& name, std::string_view text);
    std::string readFile(const std::string& name) const;  // empty when it does not exist
    bool hasFile(const std::string& name) const;

    // ---- running ----

    // The deployer with these arguments. Whatever becomes of it, a report of a
    // sanitizer or of valgrind on its standard error fails the test, and so does
    // a run that was too slow.
    ProcessResult run(const std::vector<std::string>& arguments);
    // As run, and the exit status must be 0 and standard error empty.
    ProcessResult succeeds(const std::vector<std::string>& arguments);
    // As run, and it must end with this status and this text on standard error.
    ProcessResult failsWith(int status, std::string_view text,
                            const std::vector<std::string>& arguments);
    // The deployer on the session's dump, and it must succeed; more options in words.
    ProcessResult deploy(const std::string& more = "");
    // The same from a shell in the sandbox, however it ends: "$0" "$@" in the script is the
    // deployer with its arguments, $S the session.
    ProcessResult deployIn(const std::string& script, const std::string& more = "");
    // Any command in the sandbox, with the same watch over standard error.
    ProcessResult runCommand(const std::vector<std::string>& command);
    // The same, left running: for tests that send signals in the middle.
    Process start(const std::vector<std::string>& command);
    Process startDeployer(const std::vector<std::string>& arguments);

    // ---- after a run ----

    // The texts of a run, with what it made up made plain: see plain_words.h.
    Lines journal() const;
    void forgetJournal();
    std::string resultText() const;
    std::string logText() const;
    std::string statusText() const;
    Lines gateLog() const;
    // What the panel holds, as a person would be shown it.
    std::string panel();

    // The session as the deployer is to be told of it: the same in every test,
    // so that expected texts can name it.
    static std::string sessionPath();
    // The session and the state, seen from the test.
    std::string sessionDir() const;
    const std::string& statePath() const { return state_; }
    static std::string deployer();
    static std::string restorectl();
    // The arguments for deploying the session's dump; more of them in words.
    static Lines deployment(const std::string& more = "");

  private:
    std::string plainFile(const std::string& name) const;
    std::vector<std::string> enterCommand();
    std::vector<std::string> cleanEnvironment() const;

    std::string state_;
    bool gate_ = false;
    bool model_ = true;
    bool configuration_ = true;
    bool clients_ = false;
    bool hasSetup_ = false;
    std::vector<std::string> environment_;
    std::chrono::milliseconds patience_ = std::chrono::minutes(1);
};
