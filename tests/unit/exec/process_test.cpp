#include "exec/process.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "commons/system_error.h"

using namespace zelvo;
using testing::HasSubstr;
using testing::Not;

namespace {

ArgList makeArgs(std::initializer_list<const char*> arguments) {
    ArgList args;
    for (const char* argument : arguments) {
        args.push_back(argument);
    }
    return args;
}

// One run of a child and what came of it.
struct ChildRun {
    ChildRun(const std::string& utility, const ArgList& args, const std::string& input = "",
             const Environment& env = {}, std::uint32_t uid = kKeepUser)
        : code(forkExecvGetInOutErrSuidEnv(input, out, err, utility, args, uid, env)) {}

    explicit ChildRun(const char* script, const std::string& input = "",
                      const Environment& env = {}, std::uint32_t uid = kKeepUser)
        : ChildRun("/bin/sh", makeArgs({"sh", "-c", script}), input, env, uid) {}

    std::string out;
    std::string err;
    int code;
};

// A directory that is gone at the end of the test.
class ScratchDir {
  public:
    ScratchDir() {
        std::string path = testing::TempDir() + "process-test-XXXXXX";
        path_ = mkdtemp(path.data());
        chmod(path_.c_str(), 0755);
    }
    ~ScratchDir() { std::filesystem::remove_all(path_); }

    std::string file(const std::string& name, const std::string& text, mode_t mode) const {
        std::string path = path_ + "/" + name;
        std::ofstream(path) << text;
        chmod(path.c_str(), mode);
        return path;
    }
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

class ScopedHandler {
  public:
    ScopedHandler(int number, void (*handler)(int)) : number_(number) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(number, &action, &saved_);
    }
    ~ScopedHandler() { sigaction(number_, &saved_, nullptr); }

  private:
    int number_;
    struct sigaction saved_ {};
};

// Runs a check in a process of its own, whose descriptors and user it may spoil.
bool holdsInChildProcess(const std::function<bool()>& check) {
    const pid_t pid = fork();
    if (pid == 0) {
        bool holds = false;
        try {
            holds = check();
        } catch (...) {
        }
        _exit(holds ? 0 : 1);
    }
    int status = -1;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

TEST(Runner, EchoesMoreThanAPipeHoldsWithoutDeadlock) {
    std::string input(64 << 20, 'x');
    input[input.size() / 2] = '\0';
    const ChildRun run("/bin/cat", makeArgs({"cat"}), input);
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out == input);
}

TEST(Runner, KeepsTheStreamsApartAndAppendsToTheTexts) {
    std::string out = "before ";
    std::string err;
    const ArgList args = makeArgs({"sh", "-c", "echo out; echo err >&2; exit 7"});
    EXPECT_EQ(forkExecvGetOutErr(out, err, "/bin/sh", args), 7);
    EXPECT_EQ(out, "before out\n");
    EXPECT_EQ(err, "err\n");
    EXPECT_EQ(forkExecvGetOut(out, "/bin/sh", args), 7);
    EXPECT_EQ(out, "before out\nout\n");
}

TEST(Runner, KeepsTheOutputOfAChildEndedByASignal) {
    const ChildRun run("echo partial; kill -9 $$");
    EXPECT_EQ(run.code, -1);
    EXPECT_EQ(run.out, "partial\n");
}

TEST(Runner, WaitsForAGrandchildThatHoldsTheOutput) {
    const ChildRun run("(sleep 0.3; echo late) & echo early");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "early\nlate\n");
}

TEST(Runner, LetsAChildIgnoreAnInputThatThePipeHolds) {
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(ChildRun("/bin/true", makeArgs({"true"}), std::string(60000, 'x')).code, 0);
    }
}

TEST(Runner, FailsToWriteAnInputThatNobodyReads) {
    try {
        const ChildRun run("/bin/true", makeArgs({"true"}), std::string(1 << 20, 'x'));
        ADD_FAILURE() << "nothing was raised";
    } catch (const SystemError& failure) {
        EXPECT_STREQ(failure.what(), "writeToString failed: Broken pipe");
    }
    EXPECT_GT(wait(nullptr), 0) << "the child is left to be waited for";
}

TEST(Runner, GoesOnWhenASignalInterruptsIt) {
    const ScopedHandler handler(SIGALRM, [](int) {});
    const itimerval soon{{0, 20000}, {0, 20000}};
    const itimerval never{};
    setitimer(ITIMER_REAL, &soon, nullptr);
    const ChildRun run("sleep 0.2; cat; exec >&- 2>&-; sleep 0.2; exit 3",
                       std::string(1 << 20, 'x'));
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(run.out.size(), std::size_t{1} << 20);
}

TEST(Runner, GetsTheStatusWhereChildrenAreReapedByTheKernel) {
    const ScopedHandler ignored(SIGCHLD, SIG_IGN);
    EXPECT_EQ(ChildRun("exit 5").code, 5);
}

TEST(Runner, WorksAboveDescriptor1023AndLeaksNone) {
    rlimit saved{};
    getrlimit(RLIMIT_NOFILE, &saved);
    const rlimit wide{saved.rlim_max, saved.rlim_max};
    ASSERT_GE(saved.rlim_max, 2000U);
    setrlimit(RLIMIT_NOFILE, &wide);
    std::vector<int> opened;
    while (opened.empty() || opened.back() < 1500) {
        opened.push_back(open("/dev/null", O_RDONLY));
    }
    const ChildRun run("cat; ls /proc/$$/fd; true", "in\n");
    const int next = open("/dev/null", O_RDONLY);
    EXPECT_EQ(run.out, "in\n0\n1\n2\n");
    EXPECT_EQ(next, opened.back() + 1) << "a descriptor of the run stayed open";
    opened.push_back(next);
    for (const int fd : opened) {
        close(fd);
    }
    setrlimit(RLIMIT_NOFILE, &saved);
}

TEST(Runner, WorksInAProcessWithoutStandardStreams) {
    EXPECT_TRUE(holdsInChildProcess([] {
        for (int fd = 0; fd <= 2; ++fd) {
            close(fd);
        }
        const ChildRun run("cat; echo err >&2", "in");
        return run.out == "in" && run.err == "err\n" && run.code == 0;
    }));
}

TEST(Child, HasDefaultSignals) {
    const ScopedHandler ignoredPipe(SIGPIPE, SIG_IGN);
    const ScopedHandler ignored(SIGHUP, SIG_IGN);
    const ScopedHandler caught(SIGTERM, [](int) {});
    sigset_t blocked;
    sigset_t saved;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigprocmask(SIG_BLOCK, &blocked, &saved);
    const ChildRun run("/bin/cat", makeArgs({"cat", "/proc/self/status"}));
    sigset_t after;
    sigprocmask(SIG_SETMASK, &saved, &after);
    for (const char* field : {"SigBlk", "SigIgn", "SigCgt"}) {
        EXPECT_THAT(run.out, HasSubstr(std::string(field) + ":\t0000000000000000\n"));
    }
    EXPECT_TRUE(sigismember(&after, SIGUSR1)) << "the caller's mask has changed";
    EXPECT_FALSE(sigismember(&after, SIGUSR2)) << "the caller's mask has changed";
    struct sigaction action {};
    sigaction(SIGTERM, nullptr, &action);
    EXPECT_NE(action.sa_handler, SIG_DFL) << "the caller's handler is gone";
}

TEST(Child, SeesItsArgumentsEnvironmentAndUser) {
    const ChildRun named("/bin/sh", makeArgs({"another name", "-c", "echo \"$0\" $#"}));
    EXPECT_EQ(named.out, "another name 0\n");
    setenv("ZT_INHERITED", "old", 1);
    const ChildRun env("/usr/bin/env", makeArgs({"env"}), "",
                       {{"ZT_INHERITED", "new"}, {"ZT_B", "2"}, {"ZT_A", "a b"}});
    EXPECT_THAT(env.out, HasSubstr("ZT_INHERITED=new\n"));
    EXPECT_THAT(env.out, Not(HasSubstr("ZT_INHERITED=old")));
    EXPECT_THAT(env.out, testing::EndsWith("ZT_A=a b\nZT_B=2\n"));
    EXPECT_STREQ(getenv("ZT_INHERITED"), "old") << "the caller's environment has changed";
    if (getuid() == 0) {
        EXPECT_EQ(ChildRun("id -u; id -g", "", {}, 65534).out, "65534\n0\n");
    }
}

TEST(Child, IsFoundInThePathThatItSees) {
    const ScratchDir dir;
    dir.file("zt-tool", "echo script $0 $1 $#", 0755);  // No header: the shell runs it.
    const ChildRun run("zt-tool", makeArgs({"ignored", "one two"}), "", {{"PATH", dir.path()}});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "script " + dir.path() + "/zt-tool one two 1\n");
}

TEST(FailedStart, IsToldInBothStreamsWithCode1) {
    const ScratchDir dir;
    const std::string plain = dir.file("plain", "no program", 0644);
    const std::string broken = dir.file("broken", "#!/nonexistent/shell\n", 0755);
    const struct {
        std::string utility;
        const char* number;
        const char* reason;
    } rows[] = {
        {"/nonexistent/tool", "2", "No such file or directory"},
        {"zt-nowhere-in-path", "2", "No such file or directory"},
        {"", "2", "No such file or directory"},
        {broken, "2", "No such file or directory"},
        {plain, "13", "Permission denied"},
        {dir.path(), "13", "Permission denied"},
        {plain + "/below", "20", "Not a directory"},
    };
    for (const auto& row : rows) {
        // An input that the pipe cannot hold is no failure of its own.
        const ChildRun run(row.utility, makeArgs({"x"}), std::string(1 << 20, 'x'));
        const std::string text = std::string("forkExecvPipes: execv() failed: ") + row.reason +
                                 "\n\nSystem error " + row.number + ": " + row.reason + "\n";
        EXPECT_EQ(run.code, 1) << row.utility;
        EXPECT_EQ(run.out, text) << row.utility;
        EXPECT_EQ(run.err, text) << row.utility;
    }
}

TEST(FailedStart, OfUserAndEnvironmentIsToldOnStandardError) {
    const ChildRun badName("true", "", {{"A=B", "x"}});
    EXPECT_EQ(badName.code, 1);
    EXPECT_EQ(badName.out, "");
    EXPECT_EQ(badName.err,
              "Uncaught std::exception: forkExecvPipes: setenv() falied: Invalid argument\n");
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can give its rights up";
    }
    EXPECT_TRUE(holdsInChildProcess([] {
        if (setuid(65534) != 0) {
            return false;
        }
        const ChildRun run("true", "", {{"A=B", "the user comes first"}}, 0);
        return run.code == 1 && run.out.empty() &&
               run.err ==
                   "Uncaught std::exception: forkExecvPipes: setuid() failed: Operation not "
                   "permitted\n";
    }));
}

TEST(ForkExecvPipes, GivesTheNullDeviceForNoStream) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const ArgList args = makeArgs({"sh", "-c", "cat; echo out; echo err >&2"});
    const pid_t pid = forkExecvPipes(-1, ends[1], -1, "/bin/sh", args, kKeepUser, {});
    close(ends[1]);
    int status = -1;
    EXPECT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_EQ(status, 0);
    std::string out;
    EXPECT_FALSE(readToString(ends[0], out));
    EXPECT_EQ(out, "out\n");
    close(ends[0]);
}

TEST(Dup2Custom, MovesTheSourceAndLeavesEqualOnesAlone) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int target = dup(ends[0]);
    EXPECT_EQ(dup2Custom(ends[1], target), target);
    EXPECT_EQ(fcntl(ends[1], F_GETFD), -1) << "the source is still open";
    EXPECT_EQ(dup2Custom(target, target), target);
    EXPECT_EQ(write(target, "x", 1), 1);
    EXPECT_EQ(dup2Custom(-1, target), target);
    char byte = 0;
    EXPECT_EQ(read(target, &byte, 1), 0);
    close(target);
    close(ends[0]);
}
