#include "restorectl/narrator.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "commons/text_formatter.h"
#include "report/termination_lines.h"
#include "restorectl/report.h"

namespace zelvo {

namespace {

constexpr std::chrono::seconds kPatience(2);
constexpr std::chrono::milliseconds kInterval(500);

// Of the terminal, in columns.
std::size_t terminalWidth() {
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// Starts a thread that no signal is delivered to: they are for the one that works.
template <class Work>
std::thread startDeafThread(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(work);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}  // namespace

Narrator::Narrator(bool verbose)
    : verbose_(verbose), isTerminal_(!verbose && isatty(STDERR_FILENO) == 1) {
    theDebugLog = this;
    if (isTerminal_) {
        ticker_ = startDeafThread([this] { tick(); });
    }
}

Narrator::~Narrator() {
    theDebugLog = nullptr;
    if (ticker_.joinable()) {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            isEnding_ = true;
        }
        end_.notify_one();
        ticker_.join();
        clearLine();
    }
}

void Narrator::log(const std::string& text) {
    writeTerminationLines();
    if (verbose_) {
        std::cerr << printable(text, "\n    ") << '\n';
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    lastLine_ = text;
}

void Narrator::log(const ExTraceable& failure) {
    failures_.emplace_back(failure.what());
    log(formatPlainTextMessage(failure));
}

void Narrator::error(const std::string& text) {
    errors_.push_back(text);
    log(text);
}

void Narrator::tick() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!end_.wait_for(lock, kInterval, [this] { return isEnding_; })) {
        const auto passed = std::chrono::steady_clock::now() - start_;
        if (passed < kPatience) {
            continue;
        }
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(passed).count();
        const std::string line = "[" + std::to_string(seconds) + " s] " + printable(lastLine_, " ");
        clearLine();
        std::cerr << line.substr(0, terminalWidth() - 1) << std::flush;
        isShown_ = true;
    }
}

void Narrator::clearLine() {
    if (isShown_) {
        std::cerr << "\r\033[K" << std::flush;
    }
}

}  // namespace zelvo
