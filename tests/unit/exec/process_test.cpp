#include "exec/process.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <tuple>

#include "temp_dir.h"

using namespace zelvo;

namespace {

ArgList makeArgs(std::initializer_list<const char*> arguments) {
    ArgList args;
    for (const char* argument : arguments) args.push_back(argument);
    return args;
}

// For good in this process and its children.
void forbidCloseRange() {
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_close_range, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{4, steps};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) _exit(2);
}

// One run of a child and what came of it.
struct ChildRun {
    ChildRun(const std::string& utility, std::initializer_list<const char*> args,
             const std::string& input = "", const Environment& env = {},
             std::uint32_t uid = kKeepUser)
        : code(forkExecvGetInOutErrSuidEnv(input, out, err, utility, makeArgs(args), uid, env)) {}

    explicit ChildRun(const char* script, const char* input = "")
        : ChildRun("/bin/sh", {"sh", "-c", script}, input) {}

    std::string out;
    std::string err;
    int code;
};

}  // namespace

TEST(Runner, EchoesMoreThanAPipeHoldsWithoutDeadlock) {
    std::string input(64 << 20, 'x');
    input[input.size() / 2] = '\0';
    const ChildRun run("/bin/cat", {"cat"}, input);
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out == input);
}

TEST(Runner, TellsTheEndAndAppendsBothStreams) {
    const std::tuple<const char*, int, const char*, const char*> rows[] = {
        {"echo out; exec >&-; sleep 0.1; echo err >&2; exit 7", 7, "before out\n", "before err\n"},
        {"echo partial; kill -9 $$", -1, "before partial\n", "before "},
        {"(sleep 0.2; echo late) & echo early", 0, "before early\nlate\n", "before "},
    };
    signal(SIGALRM, [](int) {});
    ualarm(20000, 20000);  // Interruptions change nothing.
    for (const auto& [script, code, expectedOut, expectedErr] : rows) {
        std::string out = "before ";
        std::string err = out;
        EXPECT_EQ(forkExecvGetOutErr(out, err, "/bin/sh", makeArgs({"sh", "-c", script})), code);
        EXPECT_EQ(out, expectedOut);
        EXPECT_EQ(err, expectedErr);
    }
    ualarm(0, 0);
}

// Catches an outpour that fills the memory, and the one line that tells of a fault in it.
TEST(Runner, KeepsAnExcerpt) {
    const char* const flood =
        "yes one | head -c 90000000; echo ERROR 1; yes two | head -c 90000000;"
        "tr '\\0' - < /dev/zero | head -c 9000000 >&2; echo end >&2";
    std::string out = "before ", err;
    forkExecvGetInOutErrSuidEnv("", out, err, "/bin/sh", makeArgs({"sh", "-c", flood}), kKeepUser,
                                {}, {nullptr, nullptr, "ERROR "});
    EXPECT_THAT(out, testing::AllOf(testing::StartsWith("before one\n"), testing::EndsWith("two\n"),
                                    testing::HasSubstr("one\n\n[...]\nERROR 1\ntwo\n")));
    EXPECT_THAT(err, testing::EndsWith("-end\n"));
    for (const std::string& text : {out, err}) {
        EXPECT_GT(text.size(), 128U << 10);
        EXPECT_LT(text.size(), 320U << 10);
    }
}

// Catches: an archive with names without end that takes all the memory, and one whose list is cut
// told as unpacked.
TEST(Runner, StopsWhoWritesTooMuch) {
    Confinement confinement;
    confinement.mostOutput = 1 << 20;
    for (const char* script : {"exec yes", "trap '' PIPE; yes; exit 0"}) {
        std::string out;
        std::string err;
        EXPECT_EQ(
            -1, forkExecvGetInOutErrSuidEnv("", out, err, "/bin/sh", makeArgs({"sh", "-c", script}),
                                            kKeepUser, {}, confinement));
        EXPECT_LE(out.size(), (1U << 20) + 4096);
        EXPECT_THAT(err, testing::EndsWith("The command was stopped: it writes too much.\n"));
    }
}

TEST(Runner, WorksAboveDescriptor1023AndLeaksNone) {
    const auto runAbove = [] {
        rlimit limit{};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
        int last = 0;
        while (last >= 0 && last < 1500) last = open("/dev/null", O_RDONLY);
        const ChildRun run("cat; ls /proc/$$/fd", "in\n");
        std::cerr << run.out << open("/dev/null", O_RDONLY) - last;
        _exit(last < 0 ? 1 : run.code);
    };
    EXPECT_EXIT(runAbove(), testing::ExitedWithCode(0), "^in\n0\n1\n2\n1$");
    // On a kernel that cannot close all at once.
    EXPECT_EXIT((forbidCloseRange(), runAbove()), testing::ExitedWithCode(0), "^in\n0\n1\n2\n1$");
}

TEST(Child, HasDefaultSignals) {
    signal(SIGHUP, SIG_IGN);
    signal(SIGCHLD, SIG_IGN);  // The kernel reaps children and keeps no status.
    const sighandler_t handler = [](int) {};
    signal(SIGTERM, handler);
    sigset_t mask;
    sigemptyset(&mask);
    sigaddset(&mask, SIGUSR1);
    sigset_t saved;
    sigprocmask(SIG_BLOCK, &mask, &saved);
    const ChildRun run("/bin/cat", {"cat", "/proc/self/status"});
    sigprocmask(SIG_SETMASK, &saved, &mask);
    EXPECT_EQ(run.code, 0);
    for (const char* field : {"SigBlk", "SigIgn", "SigCgt"}) {
        EXPECT_THAT(run.out, testing::HasSubstr(std::string(field) + ":\t0000000000000000\n"));
    }
    EXPECT_TRUE(sigismember(&mask, SIGUSR1)) << "the caller's mask has changed";
    EXPECT_FALSE(sigismember(&mask, SIGUSR2)) << "the caller's mask has changed";
    EXPECT_EQ(signal(SIGTERM, SIG_DFL), handler) << "the caller's handler is gone";
    signal(SIGHUP, SIG_DFL);
    signal(SIGCHLD, SIG_DFL);
}

TEST(Child, SeesItsArgumentsEnvironmentAndUser) {
    const uid_t uid = getuid() == 0 ? 65534 : getuid();
    const ChildRun run("/bin/sh", {"a name", "-c", "echo \"$0\" $# $ZT_A; id -u; id -g"}, "",
                       {{"ZT_A", "a"}}, uid);
    EXPECT_EQ(run.out,
              "a name 0 a\n" + std::to_string(uid) + "\n" + std::to_string(getgid()) + "\n");
    EXPECT_EQ(getenv("ZT_A"), nullptr) << "the caller's environment has changed";
}

// Catches a child that keeps a right of root's or can start a process, and a parent that is changed
// by what its child, in the same memory, becomes.
TEST(Child, BecomesAnOutsider) {
    if (getuid() != 0) GTEST_SKIP() << "needs root";
    const auto run = [](const Outsider& outsider) {
        std::string out, err;
        forkExecvGetInOutErrSuidEnv(
            "", out, err, "/bin/sh",
            makeArgs({"sh", "-c",
                      "while read -r a; do case $a in Uid*|Gid*|Groups*|CapEff*|NoNewPrivs*) "
                      "echo $a;; esac; done < /proc/self/status; echo $HOME; ulimit -f; (:) && "
                      "echo forked"}),
            kKeepUser, {}, {nullptr, &outsider});
        return out + err;
    };
    const auto status = [](std::uint32_t id) {
        const std::string number = " " + std::to_string(id);
        const std::string four = number + number + number + number;
        return "Uid:" + four + "\nGid:" + four +
               "\nGroups:\nCapEff: 0000000000000000\nNoNewPrivs: 1\n/nonexistent\n0\n";
    };
    const auto id = 0x70000000 + static_cast<std::uint32_t>(getpid());
    EXPECT_EQ(run(Outsider::unique()), status(id) + "sh: 1: Cannot fork\n");
    const std::optional<Outsider> small = Outsider::uniqueOfSmall();
    ASSERT_TRUE(small);
    EXPECT_THAT(small->group(), testing::AllOf(testing::Ge(60578U), testing::Le(61183U)));
    EXPECT_EQ(run(*small), status(small->group()) + "sh: 1: Cannot fork\n");
    rlimit processes{};
    getrlimit(RLIMIT_NPROC, &processes);
    EXPECT_GT(processes.rlim_cur, 1U);
    EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
    EXPECT_EQ(geteuid(), 0U);
}

TEST(Child, IsFoundInThePathThatItSees) {
    const TempDir dir;
    // No header: the shell runs it.
    const std::string path = dir.write("zt-tool", "echo script $0 $1 $#");
    chmod(path.c_str(), 0755);
    const ChildRun run("zt-tool", {"ignored", "one two"}, "", {{"PATH", dir.path("")}});
    EXPECT_EQ(run.out, "script " + dir.path("/zt-tool") + " one two 1\n");
}

TEST(FailedStart, IsToldInBothStreamsWithCode1) {
    const std::pair<const char*, int> rows[] = {
        {"/nonexistent/tool", ENOENT},
        {"zt-nowhere-in-path", ENOENT},
        {"", ENOENT},
        {"passwd", EACCES},  // In /etc, and no program.
        {"/etc/passwd/below", ENOTDIR},
    };
    for (const auto& [utility, error] : rows) {
        // An input that the pipe cannot hold is no failure of its own.
        const ChildRun run(utility, {"x"}, std::string(1 << 20, 'x'), {{"PATH", "/etc:/none"}});
        const std::string text = std::string("forkExecvPipes: execv() failed: ") + strerror(error) +
                                 "\n\nSystem error " + std::to_string(error) + ": " +
                                 strerror(error) + "\n";
        EXPECT_EQ(std::to_string(run.code) + run.out + run.err, "1" + text + text) << utility;
    }
}

TEST(FailedStart, OfUserOrEnvironmentIsToldOnStandardError) {
    const auto runBoth = [] {
        for (const std::uint32_t uid : {kKeepUser, 0U}) {
            const ChildRun run("/bin/true", {"true"}, "", {{"A=B", "x"}}, uid);
            std::cerr << run.code << run.out << run.err;
            if (getuid() == 0 && setuid(65534) != 0) _exit(1);
        }
        _exit(0);
    };
    EXPECT_EXIT(runBoth(), testing::ExitedWithCode(0),
                "^1Uncaught std::exception: forkExecvPipes: setenv\\(\\) falied: Invalid argument\n"
                "1Uncaught std::exception: forkExecvPipes: setuid\\(\\) failed: Operation not "
                "permitted\n$");
}

TEST(ForkExecvPipes, GivesTheNullDeviceForNoStream) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t pid =
        forkExecvPipes(-1, ends[1], -1, "/bin/sh",
                       makeArgs({"sh", "-c", "cat; echo out; echo err >&2"}), kKeepUser, {});
    EXPECT_EQ(waitpid(pid, nullptr, 0), pid);
    EXPECT_EQ(dup2Custom(-1, ends[1]), ends[1]) << "takes the writing end away";
    std::string out;
    EXPECT_FALSE(readToString(ends[0], out));
    EXPECT_EQ(out, "out\n");
    EXPECT_EQ(dup2Custom(ends[1], ends[0]), ends[0]);
    EXPECT_EQ(close(ends[1]), -1) << "the source is still open";
    EXPECT_EQ(dup2Custom(ends[0], ends[0]), ends[0]);
    EXPECT_EQ(close(ends[0]), 0);
}
