// Programs that a test runs, and what came of them.
#pragma once

#include <sys/types.h>
#include <chrono>
#include <string>
#include <vector>

struct ProcessResult {
    int exitStatus = -1;    // -1 when the program did not exit by itself
    int signal = 0;         // the signal that ended it, or 0
    bool timedOut = false;  // it was killed for being too slow
    std::string out;
    std::string err;
};

// A program that runs beside the test. It and all that it started are killed
// when nobody waited for it.
class Process {
  public:
    // Standard input is empty, the environment is exactly the one given. Throws
    // std::runtime_error when the program cannot be started.
    Process(const std::vector<std::string>& command, const std::vector<std::string>& environment);
    ~Process();
    Process(Process&& other) noexcept;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    Process& operator=(Process&&) = delete;

    pid_t pid() const { return pid_; }
    void signal(int number) const;

    // Takes all output and waits for the end; kills after the time is over.
    ProcessResult wait(std::chrono::milliseconds patience = std::chrono::minutes(1));

  private:
    void killAll() const;
    void readOutput(ProcessResult& result, std::chrono::steady_clock::time_point end);
    void awaitEnd(ProcessResult& result, std::chrono::steady_clock::time_point end);

    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
};

// The first line in which a sanitizer or valgrind complains, or an empty text.
std::string findReport(const std::string& err);
