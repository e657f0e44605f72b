#include "exec/outsider.h"

#include <grp.h>
#include <pwd.h>
#include <signal.h>
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
    return Outsider(kFirst + static_cast<uid_t>(getpid()));
}

std::optional<Outsider> Outsider::uniqueOfSmall() {
    constexpr uid_t kFirst = 60578;
    constexpr uid_t kCount = 61184 - kFirst;
    const auto begin = static_cast<uid_t>(getpid());
    for (uid_t i = 0; i < kCount; ++i) {
        const uid_t id = kFirst + (begin + i) % kCount;
        if (getpwuid(id) == nullptr && getgrgid(id) == nullptr) {
            return Outsider(id);
        }
    }
    return std::nullopt;
}

int Outsider::become() const noexcept {
    // The one process is the child itself.
    const rlimit alone{1, 1};
    const rlimit nothing{0, 0};
    // The program could still make and empty files where all users may, as long as no fence stands.
    const bool isDone =
        setrlimit(RLIMIT_NPROC, &alone) == 0 && setrlimit(RLIMIT_FSIZE, &nothing) == 0 &&
        signal(SIGXFSZ, SIG_IGN) != SIG_ERR && syscall(kSetOtherGroups, 0, nullptr) == 0 &&
        syscall(kSetGroups, id_, id_, id_) == 0 && syscall(kSetUsers, id_, id_, id_) == 0 &&
        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
    return isDone ? 0 : errno;
}

}  // namespace zelvo
