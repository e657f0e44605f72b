#include "exec/process.h"

#include <fcntl.h>
#include <paths.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <boost/format.hpp>
#include <cerrno>
#include <cstring>
#include <optional>

#include "commons/system_error.h"
#include "exec/descriptor.h"
#include "exec/excerpt.h"
#include "exec/spawn.h"
#include "lib/liblog.h"
#include "report/termination_lines.h"

namespace zelvo {

namespace {

// Gives a signal another disposition for its lifetime.
class ScopedDisposition {
  public:
    ScopedDisposition(int number, void (*handler)(int)) : number_(number) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(number, &action, &saved_);
    }
    ~ScopedDisposition() { sigaction(number_, &saved_, nullptr); }
    ScopedDisposition(const ScopedDisposition&) = delete;
    ScopedDisposition& operator=(const ScopedDisposition&) = delete;

  private:
    int number_;
    struct sigaction saved_ {};
};

const Environment& noAdditions() {
    static const Environment none;
    return none;
}

void makePipe(PipeEnds& pipe) {
    if (!pipe.open()) {
        messlog2(1, 0, "forkExecvGetOutErr: pipe() failed");
    }
}

void setNonBlocking(const Descriptor& end) {
    if (fcntl(end.get(), F_SETFL, O_NONBLOCK) != 0) {
        messlog2(1, 0, "forkExecvGetOutErr: fcntl(O_NONBLOCK) failed");
    }
}

// The three pipes of a run; this process's ends do not block.
struct RunPipes {
    RunPipes() {
        makePipe(in);
        makePipe(out);
        makePipe(err);
        setNonBlocking(in.writeEnd);
        setNonBlocking(out.readEnd);
        setNonBlocking(err.readEnd);
    }

    void closeChildEnds() {
        in.readEnd.reset();
        out.writeEnd.reset();
        err.writeEnd.reset();
    }

    PipeEnds in;
    PipeEnds out;
    PipeEnds err;
};

// Closes the child's input behind its last byte.
void feed(Descriptor& end, std::string_view& input) {
    writeFromString(end.get(), input);
    if (input.empty()) {
        end.reset();
    }
}

// One of the child's outputs on its way to a text, or to an excerpt in it.
class Gathering {
  public:
    Gathering(Descriptor& end, std::string& text, const Confinement& confinement)
        : end_(end), text_(text), most_(confinement.mostOutput) {
        if (confinement.excerptMark != nullptr) {
            excerpt_.emplace(text, confinement.excerptMark);
        }
    }

    void drain() {
        const std::size_t sizeBefore = text_.size();
        // One that is faster than its reader would never let an excerpt be made.
        if (!readToString(end_.get(), text_, excerpt_ ? kAtOnce : most_ - size_)) {
            end_.reset();
        }
        size_ += text_.size() - sizeBefore;
        if (!excerpt_ && size_ >= most_) {
            isCut_ = true;
            end_.reset();
        }
        if (excerpt_) {
            excerpt_->shorten();
        }
    }

    void append(const std::string& text) { text_ += text; }

    // Whether there was more than is kept.
    bool isCut() const { return isCut_; }
    // Of all that came.
    std::size_t size() const { return size_; }

  private:
    static constexpr std::size_t kAtOnce = 64 << 10;

    Descriptor& end_;
    std::string& text_;
    std::optional<Excerpt> excerpt_;
    std::size_t most_;
    std::size_t size_ = 0;
    bool isCut_ = false;
};

// Waits until one of three descriptors can go on. Those that are closed (-1) never can.
std::array<bool, 3> waitReady(const RunPipes& pipes) {
    std::array<pollfd, 3> polled{{{pipes.in.writeEnd.get(), POLLOUT, 0},
                                  {pipes.out.readEnd.get(), POLLIN, 0},
                                  {pipes.err.readEnd.get(), POLLIN, 0}}};
    const bool isInterrupted = poll(polled.data(), polled.size(), -1) < 0;
    if (isInterrupted && errno != EINTR) {
        throwSystemError("forkExecvGetOutErr: select() failed");
    }
    std::array<bool, 3> ready{};
    for (std::size_t i = 0; i < polled.size(); ++i) {
        // After a signal all are tried, and those that are not ready say so.
        ready[i] = polled[i].fd >= 0 && (isInterrupted || polled[i].revents != 0);
    }
    return ready;
}

// Lets the words of a child gather that prints many short lines, as tar does with the names of what
// it unpacks: being woken for each line costs both sides more than the line. A child that prints
// little never meets it. rounds: of reading so far. size: what they brought.
void pauseForMore(std::size_t rounds, std::size_t size) {
    constexpr std::size_t kManyRounds = 64;
    constexpr std::size_t kGoodRead = 8192;
    constexpr int kPauseMilliseconds = 5;
    if (rounds > kManyRounds && size / rounds < kGoodRead) {
        poll(nullptr, 0, kPauseMilliseconds);
    }
}

// Feeds and gathers until all three pipes are done with. Returns whether all was gathered.
bool exchange(RunPipes& pipes, std::string_view& input, Gathering out, Gathering err) {
    std::size_t rounds = 0;
    while (pipes.in.writeEnd.isOpen() || pipes.out.readEnd.isOpen() || pipes.err.readEnd.isOpen()) {
        const auto [isInReady, isOutReady, isErrReady] = waitReady(pipes);
        if (isInReady) {
            feed(pipes.in.writeEnd, input);
        }
        if (isOutReady) {
            out.drain();
        }
        if (isErrReady) {
            err.drain();
        }
        if (!pipes.in.writeEnd.isOpen()) {
            pauseForMore(++rounds, out.size() + err.size());
        }
    }
    if (out.isCut() || err.isCut()) {
        err.append("\nThe command was stopped: it writes too much.\n");
        return false;
    }
    return true;
}

// Returns the exit status, or -1.
int waitForChild(pid_t pid) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(pid, &status, 0);
    } while (ended < 0 && (errno == EINTR || errno == ECHILD));
    writeTerminationLines();
    return ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return;
        }
    }
}

// What a process says that ends by a system error nobody caught.
std::string uncaughtText(const char* what, int error) {
    return std::string("Uncaught std::exception: ") + SystemError(what, error).what() + "\n";
}

// What messlog2 says of a failed exec, on each of its two streams.
std::string execFailureText(int error) {
    const char* const reason = strerror(error);
    return (boost::format("forkExecvPipes: execv() failed: %1%\n\nSystem error %2%: %1%\n") %
            reason % error)
        .str();
}

// Writes in the place of a child that could not start what the child would have said.
void tellFailedStart(const SpawnFailure& failure, int outFd, int errFd) {
    const ScopedDisposition ignorePipe(SIGPIPE, SIG_IGN);
    switch (failure.step) {
        case SpawnStep::kStreams:
            writeAll(errFd, uncaughtText("dup2Custom failed", failure.error));
            break;
        case SpawnStep::kFence:
            writeAll(errFd, uncaughtText("the write fence failed", failure.error));
            break;
        case SpawnStep::kSetuid:
            writeAll(errFd, uncaughtText("forkExecvPipes: setuid() failed", failure.error));
            break;
        case SpawnStep::kSetenv:
            writeAll(errFd, uncaughtText("forkExecvPipes: setenv() falied", failure.error));
            break;
        case SpawnStep::kExec:
            writeAll(errFd, execFailureText(failure.error));
            writeAll(outFd, execFailureText(failure.error));
            break;
    }
}

StartedChild start(const std::array<int, 3>& streams, const std::string& utility,
                   const ArgList& args, std::uint32_t uid, const Environment& env,
                   const Confinement& confinement) {
    SpawnPlan plan(streams, utility, args, uid, env, confinement);
    const StartedChild child = startChild(plan);
    if (child.failure) {
        tellFailedStart(*child.failure, streams[1], streams[2]);
    }
    return child;
}

}  // namespace

int forkExecvGetInOutErrSuidEnv(std::string_view input, std::string& outText, std::string& errText,
                                const std::string& utility, const ArgList& args, std::uint32_t uid,
                                const Environment& env, const Confinement& confinement,
                                bool* hasStarted) {
    const ScopedDisposition ignorePipe(SIGPIPE, SIG_IGN);
    // Where SIGCHLD is ignored, which a process inherits, the kernel reaps its children and there
    // is no status to wait for.
    const ScopedDisposition keepStatus(SIGCHLD, SIG_DFL);
    RunPipes pipes;
    // What the pipe can hold is there before the child is: a child that ends without having read
    // its small input must not make a write fail now and then.
    feed(pipes.in.writeEnd, input);
    const StartedChild child =
        start({pipes.in.readEnd.get(), pipes.out.writeEnd.get(), pipes.err.writeEnd.get()}, utility,
              args, uid, env, confinement);
    pipes.closeChildEnds();
    if (hasStarted != nullptr) {
        *hasStarted = !child.failure;
    }
    if (child.failure) {
        pipes.in.writeEnd.reset();
    }
    const bool isWhole = exchange(pipes, input, {pipes.out.readEnd, outText, confinement},
                                  {pipes.err.readEnd, errText, confinement});
    const int code = waitForChild(child.pid);
    return isWhole ? code : -1;
}

int forkExecvGetOutErrSuidEnv(std::string& outText, std::string& errText,
                              const std::string& utility, const ArgList& args, std::uint32_t uid,
                              const Environment& env) {
    return forkExecvGetInOutErrSuidEnv("", outText, errText, utility, args, uid, env);
}

int forkExecvGetOutErrSuid(std::string& outText, std::string& errText, const std::string& utility,
                           const ArgList& args, std::uint32_t uid) {
    return forkExecvGetOutErrSuidEnv(outText, errText, utility, args, uid, noAdditions());
}

int forkExecvGetOutErr(std::string& outText, std::string& errText, const std::string& utility,
                       const ArgList& args) {
    return forkExecvGetOutErrSuid(outText, errText, utility, args, kKeepUser);
}

int forkExecvGetOut(std::string& outText, const std::string& utility, const ArgList& args) {
    std::string errText;
    return forkExecvGetOutErr(outText, errText, utility, args);
}

pid_t forkExecvPipes(int inFd, int outFd, int errFd, const std::string& utility,
                     const ArgList& args, std::uint32_t uid, const Environment& env) {
    return start({inFd, outFd, errFd}, utility, args, uid, env, {}).pid;
}

int dup2Custom(int source, int target) {
    if (source == target) {
        return target;
    }
    if (source == -1) {
        source = open(_PATH_DEVNULL, O_RDWR);
        if (source == -1) {
            throwSystemError("dup2Custom failed");
        }
    }
    return moveDescriptor(source, target);
}

bool readToString(int fd, std::string& text, std::size_t most) {
    std::array<char, 4096> block;
    for (std::size_t size = 0; size < most;) {
        const ssize_t got = read(fd, block.data(), block.size());
        if (got == 0) {
            return false;
        }
        if (got > 0) {
            text.append(block.data(), static_cast<std::size_t>(got));
            size += static_cast<std::size_t>(got);
        } else if (errno == EAGAIN) {
            return true;
        } else if (errno != EINTR) {
            throwSystemError("readToString failed");
        }
    }
    return true;
}

void writeFromString(int fd, std::string_view& text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            throwSystemError("writeToString failed");
        }
    }
}

}  // namespace zelvo
