#include "commons/termination.h"

#include <atomic>

namespace zelvo {

namespace {

// Both are lock-free, which makes them safe in a signal handler.
std::atomic<bool> isProgramTerminated{false};
std::atomic<int> notedSignals{0};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);
std::atomic<bool> isTold{false};

}  // namespace

MigrationTerminatedException::MigrationTerminatedException()
    : std::runtime_error("Migration has been terminated") {
    isTold.store(true);
}

void noteTerminationSignal() noexcept {
    notedSignals.fetch_add(1);
    terminateProgram();
}

void terminateProgram() noexcept { isProgramTerminated.store(true); }

bool isTerminationRequested() noexcept { return isProgramTerminated.load(); }

bool isTerminationTold() noexcept { return isTold.load(); }

int takeTerminationSignals() noexcept { return notedSignals.exchange(0); }

}  // namespace zelvo
