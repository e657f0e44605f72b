#include "exec/spawn.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/close_range.h>
#include <paths.h>
#include <signal.h>
#include <sys/prctl.h>
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

// Leaves word for the parent, whose memory this is, why the child is no program, and ends it.
[[noreturn]] void giveUp(SpawnPlan& plan, SpawnStep step, int error) {
    plan.failedStep = step;
    plan.error = error;
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

constexpr int kFirstInherited = STDERR_FILENO + 1;

// name: of an entry of /proc/self/fd, a number but for the two directories.
void closeNamed(const char* name) {
    int fd = 0;
    for (; *name >= '0' && *name <= '9'; ++name) {
        fd = 10 * fd + (*name - '0');
    }
    if (*name == '\0' && fd >= kFirstInherited) {
        fcntl(fd, F_SETFD, FD_CLOEXEC);
    }
}

// Has the kernel's list of open descriptors closed, by system calls alone: what the library opens
// directories with allocates. Returns false where there is no such list.
bool closeListed() {
    const int list = open("/proc/self/fd", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (list < 0) {
        return false;
    }
    alignas(dirent64) char entries[2048];
    long size = 0;
    while ((size = syscall(SYS_getdents64, list, entries, sizeof(entries))) > 0) {
        for (long at = 0; at < size;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(entries + at);
            closeNamed(entry->d_name);
            at += entry->d_reclen;
        }
    }
    close(list);
    return size == 0;
}

// Has every descriptor above the standard streams closed by the coming exec.
void closeInherited() {
    // A kernel before 5.11 does not know the flag.
    if (syscall(SYS_close_range, kFirstInherited, ~0U, CLOSE_RANGE_CLOEXEC) == 0 || closeListed()) {
        return;
    }
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    for (rlim_t fd = kFirstInherited; fd < limit.rlim_cur; ++fd) {
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

void confine(SpawnPlan& plan) {
    const Confinement& confinement = plan.confinement;
    // The fence takes rights that an outsider does not have.
    const Processes others =
        confinement.outsider != nullptr ? Processes::kHidden : Processes::kShown;
    const int fenceError = confinement.fence != nullptr ? confinement.fence->close(others) : 0;
    if (fenceError != 0) {
        giveUp(plan, SpawnStep::kFence, fenceError);
    }
    const int userError = confinement.outsider != nullptr ? confinement.outsider->become() : 0;
    if (userError != 0) {
        giveUp(plan, SpawnStep::kSetuid, userError);
    }
}

[[noreturn]] void runChild(SpawnPlan& plan) {
    resetSignals(plan.signals);
    for (int target = STDIN_FILENO; target <= STDERR_FILENO; ++target) {
        int source = plan.streams[static_cast<std::size_t>(target)];
        if (source == -1) {
            source = open(_PATH_DEVNULL, O_RDWR);
        }
        if (source == -1) {
            giveUp(plan, SpawnStep::kStreams, errno);
        }
        moveDescriptor(source, target);
    }
    closeInherited();
    confine(plan);
    if (plan.uid != kKeepUser && setUserId(plan.uid) != 0) {
        giveUp(plan, SpawnStep::kSetuid, errno);
    }
    if (plan.environment.error() != 0) {
        giveUp(plan, SpawnStep::kSetenv, plan.environment.error());
    }
    giveUp(plan, SpawnStep::kExec, execProgram(plan));
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
// here changes between the two returns of vfork but errno, which is shared too, and what the plan
// tells of a failure.
[[gnu::noinline]] pid_t vforkChild(SpawnPlan& plan) {
    const SignalBlock block;
    const int savedErrno = errno;
    const int savedDumpable = prctl(PR_GET_DUMPABLE);
    const pid_t pid = vfork();  // NOLINT(clang-analyzer-security.insecureAPI.vfork)
    if (pid == 0) {
        runChild(plan);  // NOLINT(clang-analyzer-unix.Vfork)
    }
    if (pid > 0) {
        // A child that changes its user has marked the memory of both as one that is not dumped.
        prctl(PR_SET_DUMPABLE, savedDumpable);
        errno = savedErrno;
    }
    return pid;
}

// Clients of servers look for settings in it, and some take one that they may not enter for a
// failure. What root has there is not the outsider's anyway.
Environment withoutHome(Environment env) {
    env["HOME"] = "/nonexistent";
    return env;
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

}  // namespace

SpawnPlan::SpawnPlan(const std::array<int, 3>& childStreams, const std::string& utility,
                     const ArgList& args, std::uint32_t childUid, const Environment& env,
                     const Confinement& childConfinement)
    : streams(childStreams),
      uid(childUid),
      confinement(childConfinement),
      environment(confinement.outsider == nullptr ? env : withoutHome(env),
                  confinement.outsider == nullptr ? Inherited::kAll : Inherited::kBasic),
      candidates(programCandidates(utility, environment.find("PATH"))),
      signals(changedSignals()),
      argv(args.data()),
      shellArgv(makeShellArgv(args)) {}

StartedChild startChild(SpawnPlan& plan) {
    const pid_t pid = vforkChild(plan);
    if (pid < 0) {
        throwSystemError("forkExecvPipes: fork() failed");
    }
    if (plan.error == 0) {
        return {pid, std::nullopt};
    }
    return {pid, SpawnFailure{plan.failedStep, plan.error}};
}

}  // namespace zelvo
