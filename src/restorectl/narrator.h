// The lines of the repository for somebody who waits for a command.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "report/debug_log.h"

namespace zelvo {

// The debug log of restorectl, on standard error: with verbose every line; without it, on a
// terminal, what a command that takes longer than two seconds is just doing. It is theDebugLog
// while it lives.
class Narrator : public DebugLog {
  public:
    explicit Narrator(bool verbose);
    ~Narrator() override;
    Narrator(const Narrator&) = delete;
    Narrator& operator=(const Narrator&) = delete;

    void log(const std::string& text) override;
    void log(const boost::format& text) override { log(text.str()); }
    void log(const ExTraceable& failure) override;
    void error(const std::string& text) override;
    bool isVerboseMode() const override { return verbose_; }
    bool isDebugMode() const override { return false; }

    // What the work went on behind since the last call: errors in words, and failures.
    std::vector<std::string> takeErrors() { return std::exchange(errors_, {}); }
    std::vector<std::string> takeFailures() { return std::exchange(failures_, {}); }
    void addFailure(const std::string& text) { failures_.push_back(text); }

  private:
    // Shows the last line, again and again.
    void tick();
    void clearLine();

    bool verbose_;
    bool isTerminal_;
    std::vector<std::string> errors_;
    std::vector<std::string> failures_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::condition_variable end_;
    bool isEnding_ = false;
    bool isShown_ = false;
    std::string lastLine_;
    std::thread ticker_;
};

}  // namespace zelvo
