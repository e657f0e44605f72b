#include "process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

struct Pipe {
    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
    }
    std::array<int, 2> ends{};
};

// Its own process group, so that a test that gives up takes the children along.
posix_spawnattr_t ownGroup() {
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    return attributes;
}

// Gives false at the end of the file.
bool readSome(int fd, std::string& text) {
    char block[65536];
    const ssize_t size = read(fd, block, sizeof block);
    if (size > 0) text.append(block, static_cast<std::size_t>(size));
    return size > 0 || (size < 0 && errno == EINTR);
}

int millisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

}  // namespace

Process::Process(const std::vector<std::string>& command,
                 const std::vector<std::string>& environment) {
    std::vector<std::string> words = command;
    std::vector<std::string> variables = environment;
    const Pipe out;
    const Pipe err;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.ends[1], 1);
    posix_spawn_file_actions_adddup2(&actions, err.ends[1], 2);
    posix_spawnattr_t attributes = ownGroup();
    const int error = posix_spawnp(&pid_, words.at(0).c_str(), &actions, &attributes,
                                   pointersTo(words).data(), pointersTo(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    close(out.ends[1]);
    close(err.ends[1]);
    out_ = out.ends[0];
    err_ = err.ends[0];
    if (error != 0) {
        close(out_);
        close(err_);
        throw std::runtime_error("cannot run " + words[0] + ": " + std::strerror(error));
    }
}

Process::Process(Process&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)),
      out_(std::exchange(other.out_, -1)),
      err_(std::exchange(other.err_, -1)) {}

Process::~Process() {
    if (pid_ > 0) {
        killAll();
        waitpid(pid_, nullptr, 0);
    }
    if (out_ >= 0) close(out_);
    if (err_ >= 0) close(err_);
}

void Process::signal(int number) const { kill(pid_, number); }

void Process::killAll() const { kill(-pid_, SIGKILL); }

void Process::readOutput(ProcessResult& result, Clock::time_point end) {
    std::array<pollfd, 2> streams{pollfd{out_, POLLIN, 0}, pollfd{err_, POLLIN, 0}};
    const std::array<std::string*, 2> texts{&result.out, &result.err};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        const int ready = poll(streams.data(), streams.size(), millisecondsUntil(end));
        if (ready == 0 && !result.timedOut) {
            result.timedOut = true;
            killAll();
            // What is in the pipes already is of interest; who still holds them is not.
            end = Clock::now() + std::chrono::seconds(1);
            continue;
        }
        if (ready == 0) return;
        for (std::size_t i = 0; i < streams.size(); ++i) {
            if (streams[i].fd >= 0 && streams[i].revents != 0 &&
                !readSome(streams[i].fd, *texts[i])) {
                streams[i].fd = -1;
            }
        }
    }
}

// A program may close its streams and live on.
void Process::awaitEnd(ProcessResult& result, Clock::time_point end) {
    pollfd process{static_cast<int>(syscall(SYS_pidfd_open, pid_, 0)), POLLIN, 0};
    if (poll(&process, 1, millisecondsUntil(end)) == 0) {
        result.timedOut = true;
        killAll();
    }
    close(process.fd);
}

ProcessResult Process::wait(std::chrono::milliseconds patience) {
    ProcessResult result;
    const Clock::time_point end = Clock::now() + patience;
    readOutput(result, end);
    awaitEnd(result, end);
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    return result;
}

std::string findReport(const std::string& err) {
    constexpr std::array<std::string_view, 10> kSigns = {
        "ERROR: AddressSanitizer",      "ERROR: LeakSanitizer", "WARNING: ThreadSanitizer",
        "WARNING: MemorySanitizer",     ": runtime error: ",    "Invalid read of size",
        "Invalid write of size",        "uninitialised value",  "are definitely lost",
        "AddressSanitizer:DEADLYSIGNAL"};
    const auto lineAt = [&](std::size_t at) {
        const auto start = err.rfind('\n', at);
        const auto from = start == std::string::npos ? 0 : start + 1;
        return err.substr(from, err.find('\n', at) - from);
    };
    for (const std::string_view sign : kSigns) {
        if (const auto at = err.find(sign); at != std::string::npos) return lineAt(at);
    }
    return {};
}
