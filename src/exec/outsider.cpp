#include "exec/outsider.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace zelvo {

namespace {

// The library's forms act on all threads of the process whose memory a child has until its exec.
#ifdef SYS_setresuid32
constexpr long kSetUsers = SYS_setresuid32;
constexpr long kSetGroups = SYS_setresgid32;
constexpr long kSetOtherGroups = SYS_setgroups32;
#else
constexpr long kSetUsers = SYS_setresuid;
constexpr long kSetGroups = SYS_setresgid;
constexpr long kSetOtherGroups = SYS_setgroups;
#endif

}  // namespace

Outsider Outsider::unique() {
    constexpr uid_t kFirst = 0x70000000;
    const uid_t id = kFirst + static_cast<uid_t>(getpid());
    return {id, id, true};
}

int Outsider::become() const noexcept {
    // The one process is the child itself.
    const rlimit alone{1, 1};
    const bool isDone = (!isAlone_ || setrlimit(RLIMIT_NPROC, &alone) == 0) &&
                        syscall(kSetOtherGroups, 0, nullptr) == 0 &&
                        syscall(kSetGroups, group_, group_, group_) == 0 &&
                        syscall(kSetUsers, user_, user_, user_) == 0 &&
                        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
    return isDone ? 0 : errno;
}

}  // namespace zelvo
