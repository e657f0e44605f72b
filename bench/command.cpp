// bench-command NOOP DIRECTORY: the cost of one command, with little and with much in memory.
//
// Each state of memory is a process of its own that stands ready, so that the states are measured
// in turn and a slow minute of the machine hits all of them.
#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "bare_command.h"
#include "dump.h"
#include "exec/exec_cmd.h"
#include "measure.h"
#include "xml/xml_document.h"

namespace {

using bench::Comparison;
using bench::Cost;

constexpr int kRounds = 21;
constexpr int kCommands = 200;
constexpr rlim_t kFewDescriptors = 1024;
constexpr rlim_t kManyDescriptors = 20000;
constexpr std::size_t kBigTree = std::size_t{1} << 30;

enum class Work : char { kBare, kUtility };

// What is allocated, in bytes.
std::size_t allocated() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// A process that waits to be asked for a batch of commands.
class Runner {
  public:
    // noop: the program to run. dump: what is kept in memory. descriptors: its RLIMIT_NOFILE.
    Runner(std::string noop, const std::string& dump, rlim_t descriptors) : noop_(std::move(noop)) {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_) != 0) {
            throw std::runtime_error("socketpair failed");
        }
        pid_ = fork();
        if (pid_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            serve(dump, descriptors);
        }
        treeSize_ = receive<std::size_t>();
    }
    ~Runner() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        close(ends_[0]);
        close(ends_[1]);
    }
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    std::size_t treeSize() const { return treeSize_; }

    // Runs a batch of kCommands.
    Cost measure(Work work) {
        send(ends_[0], work);
        return receive<Cost>();
    }

  private:
    [[noreturn]] void serve(const std::string& dump, rlim_t descriptors) {
        try {
            const rlimit limit{descriptors, descriptors};
            if (setrlimit(RLIMIT_NOFILE, &limit) != 0) {
                throw std::runtime_error("cannot set the limit of descriptors");
            }
            const std::size_t before = allocated();
            const zelvo::tXmlDocument tree(dump.c_str());
            send(ends_[1], allocated() - before);
            const bench::BareCommand bare({noop_}, {});
            Work work{};
            while (read(ends_[1], &work, sizeof(work)) == sizeof(work)) {
                send(ends_[1], bench::costOf([&] { runBatch(work, bare); }));
            }
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
        }
        _exit(1);
    }

    void runBatch(Work work, const bench::BareCommand& bare) const {
        for (int i = 0; i < kCommands; ++i) {
            if (work == Work::kBare) {
                bare.run();
                continue;
            }
            zelvo::ExecCmd command(noop_);
            if (command.execCmdLine() != 0) {
                throw std::runtime_error("cannot run " + noop_);
            }
        }
    }

    template <class Value>
    static void send(int fd, const Value& value) {
        if (write(fd, &value, sizeof(value)) != sizeof(value)) {
            throw std::runtime_error("a process of the benchmark is gone");
        }
    }

    template <class Value>
    Value receive() const {
        Value value{};
        if (read(ends_[0], &value, sizeof(value)) != sizeof(value)) {
            throw std::runtime_error("a process of the benchmark is gone");
        }
        return value;
    }

    std::string noop_;
    int ends_[2];
    pid_t pid_;
    std::size_t treeSize_ = 0;
};

bool run(const std::string& noop, const std::string& directory) {
    const std::string smallDump = directory + "/small.xml";
    const std::string bigDump = directory + "/big.xml";
    bench::writeDump(smallDump, 10);
    // A tree is eleven times as big as its text.
    bench::writeDump(bigDump, bench::domainsIn(kBigTree / 10));
    Runner small(noop, smallDump, kFewDescriptors);
    Runner big(noop, bigDump, kFewDescriptors);
    Runner wide(noop, smallDump, kManyDescriptors);
    if (big.treeSize() < kBigTree) {
        throw std::runtime_error("the tree has only " + std::to_string(big.treeSize()) + " bytes");
    }

    Comparison smallToBare("small dump, to the bare loop");
    Comparison bigToBare("1 GB tree, to the bare loop");
    Comparison bigToSmall("1 GB tree, to the small dump");
    Comparison wideToFew("20,000 descriptors, to 1,024");
    for (int round = 0; round < kRounds; ++round) {
        const Cost smallBare = small.measure(Work::kBare);
        const Cost smallUtility = small.measure(Work::kUtility);
        const Cost bigUtility = big.measure(Work::kUtility);
        const Cost bigBare = big.measure(Work::kBare);
        const Cost wideUtility = wide.measure(Work::kUtility);
        const Cost fewUtility = small.measure(Work::kUtility);
        smallToBare.add(smallUtility, smallBare);
        bigToBare.add(bigUtility, bigBare);
        bigToSmall.add(bigUtility, smallUtility);
        wideToFew.add(wideUtility, fewUtility);
    }
    bench::tellHeading("One command (" + std::to_string(big.treeSize() >> 20) + " MB in the tree)",
                       "the runner of commands with a program that does nothing",
                       "a bare loop of posix_spawn and waitpid with three pipes; for the last two "
                       "rows the runner itself");
    bool isOk = smallToBare.tellTime(1.3, kCommands);
    isOk = bigToBare.tellTime(1.3, kCommands) && isOk;
    isOk = bigToSmall.tellTime(1.05, kCommands) && isOk;
    return wideToFew.tellTime(1.05, kCommands) && isOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-command NOOP DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-command: %s\n", failure.what());
        return 2;
    }
}
