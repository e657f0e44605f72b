#include "exec/spawn.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <paths.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "commons/system_error.h"
#include "exec/descriptor.h"
#include "exec/keep_user.h"
#include "exec/program_path.h"

namespace zelvo {

namespace {

// What the kernel calls an action: the handler's address, flags, a restorer and the mask. The
// library's sigaction leaves out two signals that it uses itself, and a caller may have had those
// ignored too. An action of zeros is the default one.
using KernelAction = std::array<unsigned long, 8>;

long kernelSigaction(int number, const KernelAction* action, KernelAction* before) {
    constexpr std::size_t kMaskSize = (NSIG - 1) / 8;
    return syscall(SYS_rt_sigaction, number, action, before, kMaskSize);
}

// ---- In the child: from here to the next rule nothing may allocate, lock, throw or return.

// Tells the parent why the child is no program and ends it.
[[noreturn]] void giveUp(int outcome, SpawnStep step, int error) {
    const SpawnFailure failure{step, error};
    // Smaller than PIPE_BUF, so it is written whole or not at all.
    while (write(outcome, &failure, sizeof(failure)) < 0 && errno == EINTR) {
    }
    _exit(1);
}

// The parent's handlers must not run in the child, which shares its memory; what the parent ignores
// is no wish of the child either.
void resetSignals(const std::vector<int>& numbers) {
    const KernelAction defaultAction{};
    for (const int number : numbers) {
        kernelSigaction(number, &defaultAction, nullptr);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// Has every descriptor above the standard streams closed by the coming exec.
void closeInherited() {
    constexpr unsigned kFirst = STDERR_FILENO + 1;
    if (syscall(SYS_close_range, kFirst, ~0U, CLOSE_RANGE_CLOEXEC) == 0) {
        return;
    }
    // A kernel before 5.11.
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    for (rlim_t fd = kFirst; fd < limit.rlim_cur; ++fd) {
        fcntl(static_cast<int>(fd), F_SETFD, FD_CLOEXEC);
    }
}

// The library's setuid acts on all threads of the process whose memory this is.
long setUserId(std::uint32_t uid) {
#ifdef SYS_setuid32
    return syscall(SYS_setuid32, uid);
#else
    return syscall(SYS_setuid, uid);
#endif
}

bool isWorthAnotherTry(int error) {
    switch (error) {
        case EACCES:
        case ENOENT:
        case ESTALE:
        case ENOTDIR:
        case ENODEV:
        case ETIMEDOUT:
            return true;
        default:
            return false;
    }
}

// Becomes the program as execvp would. Returns the error number that execvp would leave.
int execProgram(SpawnPlan& plan) {
    int error = ENOENT;
    bool isDenied = false;
    for (const std::string& candidate : plan.candidates) {
        execve(candidate.c_str(), plan.argv, plan.environment.data());
        if (errno == ENOEXEC) {
            plan.shellArgv[1] = const_cast<char*>(candidate.c_str());
            execve(plan.shellArgv[0], plan.shellArgv.data(), plan.environment.data());
        }
        error = errno;
        if (!isWorthAnotherTry(error)) {
            return error;
        }
        isDenied = isDenied || error == EACCES;
    }
    return isDenied ? EACCES : error;
}

[[noreturn]] void runChild(SpawnPlan& plan, int outcome) {
    resetSignals(plan.signals);
    for (int target = STDIN_FILENO; target <= STDERR_FILENO; ++target) {
        int source = plan.streams[static_cast<std::size_t>(target)];
        if (source == -1) {
            source = open(_PATH_DEVNULL, O_RDWR);
        }
        if (source == -1) {
            giveUp(outcome, SpawnStep::kStreams, errno);
        }
        moveDescriptor(source, target);
    }
    closeInherited();
    const int fenceError = plan.fence != nullptr ? plan.fence->close() : 0;
    if (fenceError != 0) {
        giveUp(outcome, SpawnStep::kFence, fenceError);
    }
    if (plan.uid != kKeepUser && setUserId(plan.uid) != 0) {
        giveUp(outcome, SpawnStep::kSetuid, errno);
    }
    if (plan.environment.error() != 0) {
        giveUp(outcome, SpawnStep::kSetenv, plan.environment.error());
    }
    giveUp(outcome, SpawnStep::kExec, execProgram(plan));
}

// ---- In the parent.

// Holds all signals back for its lifetime.
class SignalBlock {
  public:
    SignalBlock() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &saved_);
    }
    ~SignalBlock() { sigprocmask(SIG_SETMASK, &saved_, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

  private:
    sigset_t saved_;
};

// In a function of its own, because the child runs on this frame until it is a program: nothing
// here changes between the two returns of vfork but errno, which is shared too.
[[gnu::noinline]] pid_t vforkChild(SpawnPlan& plan, int outcome) {
    const SignalBlock block;
    const int savedErrno = errno;
    const pid_t pid = vfork();  // NOLINT(clang-analyzer-security.insecureAPI.vfork)
    if (pid == 0) {
        runChild(plan, outcome);  // NOLINT(clang-analyzer-unix.Vfork)
    }
    if (pid > 0) {
        errno = savedErrno;
    }
    return pid;
}

std::vector<char*> makeShellArgv(const ArgList& args) {
    static char shell[] = _PATH_BSHELL;
    std::vector<char*> argv{shell, nullptr};
    for (std::size_t i = 1; i < args.size(); ++i) {
        argv.push_back(args.data()[i]);
    }
    argv.push_back(nullptr);
    return argv;
}

// The signals that a child may not find at their default: those that this process was started
// with another disposition of, and those that it changes in its run. The others are left out: each
// reset is a system call in every child.
std::vector<int> findChangedSignals() {
    std::vector<int> changed{SIGHUP, SIGINT, SIGTERM, SIGPIPE, SIGCHLD};
    for (int number = 1; number < NSIG; ++number) {
        KernelAction action{};
        if (kernelSigaction(number, nullptr, &action) == 0 && action[0] != 0) {
            changed.push_back(number);
        }
    }
    return changed;
}

const std::vector<int>& changedSignals() {
    static const std::vector<int> changed = findChangedSignals();
    return changed;
}

// Waits until every end of the outcome that the child holds is closed, which its exec does.
std::optional<SpawnFailure> readFailure(int outcome) {
    SpawnFailure failure{};
    ssize_t got = 0;
    do {
        got = read(outcome, &failure, sizeof(failure));
    } while (got < 0 && errno == EINTR);
    if (got == static_cast<ssize_t>(sizeof(failure))) {
        return failure;
    }
    return std::nullopt;
}

}  // namespace

SpawnPlan::SpawnPlan(const std::array<int, 3>& childStreams, const std::string& utility,
                     const ArgList& args, std::uint32_t childUid, const Environment& env,
                     const WriteFence* writeFence)
    : streams(childStreams),
      uid(childUid),
      fence(writeFence),
      environment(env),
      candidates(programCandidates(utility, environment.find("PATH"))),
      signals(changedSignals()),
      argv(args.data()),
      shellArgv(makeShellArgv(args)) {}

StartedChild startChild(SpawnPlan& plan) {
    Pipe outcome;
    if (!outcome.open()) {
        throwSystemError("forkExecvPipes: fork() failed");
    }
    const pid_t pid = vforkChild(plan, outcome.writeEnd.get());
    if (pid < 0) {
        throwSystemError("forkExecvPipes: fork() failed");
    }
    outcome.writeEnd.reset();
    return {pid, readFailure(outcome.readEnd.get())};
}

}  // namespace zelvo
