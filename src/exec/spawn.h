// Starts a child without copying this process's page tables. What runs between the birth of the
// child and its program stands in spawn.cpp, and all of it is async-signal-safe.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "exec/arg_list.h"
#include "exec/confinement.h"
#include "exec/environment.h"

namespace zelvo {

// The step that kept a child from becoming its program.
enum class SpawnStep { kStreams, kFence, kSetuid, kSetenv, kExec };

// Why a child did not become its program.
struct SpawnFailure {
    SpawnStep step;
    // The error number.
    int error;
};

// All that a child needs to become its program, made ready beforehand, since the child runs in its
// parent's memory and must neither allocate nor take a lock.
class SpawnPlan {
  public:
    // streams: the descriptors that become 0, 1 and 2; -1 for /dev/null. The rest as in
    // forkExecvGetInOutErrSuidEnv. args and what confines the child have to live as
    // long as the plan.
    SpawnPlan(const std::array<int, 3>& streams, const std::string& utility, const ArgList& args,
              std::uint32_t uid, const Environment& env, const Confinement& confinement);

    const std::array<int, 3> streams;
    const std::uint32_t uid;
    const Confinement confinement;
    const EnvironmentVector environment;
    const std::vector<std::string> candidates;
    // The signals to give their default disposition.
    const std::vector<int>& signals;
    char* const* const argv;
    // The arguments for a program without a header that the kernel knows, which the shell runs: the
    // shell, a place for the program's path, the arguments behind the first.
    std::vector<char*> shellArgv;
    // Set by the child, in its parent's memory, when it gives up: the step, and the error number
    // that is 0 until then. The parent goes on only when the child has become its program or ended.
    // Volatile, as a compiler does not see that a function that never returns can leave anything.
    volatile SpawnStep failedStep = SpawnStep::kExec;
    volatile int error = 0;
};

// A child that was started. One with a failure ends with status 1 and has to be waited for too.
struct StartedChild {
    pid_t pid;
    std::optional<SpawnFailure> failure;
};

// Starts a child with the default disposition of every signal, an empty signal mask and no other
// descriptors than its streams; returns when it has become its program or given up. Raises
// SystemError with "forkExecvPipes: fork() failed" (POSIX vfork).
StartedChild startChild(SpawnPlan& plan);

}  // namespace zelvo
