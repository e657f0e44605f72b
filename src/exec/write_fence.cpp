#include "exec/write_fence.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <linux/landlock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace zelvo {

namespace {

int cloneTree(int directory) {
    return open_tree(directory, "",
                     AT_EMPTY_PATH | AT_RECURSIVE | OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC);
}

// Rules that forbid nothing themselves: moving and linking between directories would be forbidden
// by being left out. What counts is that a process under rules may not look into one that is not.
Descriptor makeDomainRules() {
    landlock_ruleset_attr handled{};
    handled.handled_access_fs = LANDLOCK_ACCESS_FS_REFER;
    Descriptor rules(
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &handled, sizeof(handled), 0U)));
    const Descriptor root(open("/", O_PATH | O_CLOEXEC));
    landlock_path_beneath_attr everywhere{};
    everywhere.allowed_access = LANDLOCK_ACCESS_FS_REFER;
    everywhere.parent_fd = root.get();
    if (syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &everywhere, 0U) !=
        0) {
        rules.reset();
    }
    return rules;
}

// Empty where the system has none (a kernel before 5.19, or one started without).
const Descriptor& domainRules() {
    static const Descriptor rules = makeDomainRules();
    return rules;
}

// Keeps the program to come from leaving its view through the root, the directory or a descriptor
// of another process, to which links in /proc lead whatever is mounted: the machine there can be
// written to. Without the capability it does not see into processes that have more of them than it
// has; with the rules, where there are any, into none at all. Returns false with errno set.
bool closeOtherProcesses(int rules) noexcept {
    return prctl(PR_CAPBSET_DROP, CAP_SYS_PTRACE, 0, 0, 0) == 0 &&
           (rules < 0 || syscall(SYS_landlock_restrict_self, rules, 0U) == 0);
}

// All users may read the arguments of processes, and some hold a password. A container may forbid
// to mount a /proc without those of others; then there is none at all.
void coverProcesses() noexcept {
    constexpr unsigned long kFlags = MS_RDONLY | MS_NOSUID | MS_NODEV | MS_NOEXEC;
    if (mount("proc", "/proc", "proc", kFlags, "hidepid=2,subset=pid") != 0) {
        mount("none", "/proc", "tmpfs", kFlags, nullptr);
    }
}

int closeAround(int tree, const char* path, int rules, Processes others) noexcept {
    mount_attr readOnly{};
    readOnly.attr_set = MOUNT_ATTR_RDONLY;
    // Or what is mounted here would be so on the machine.
    readOnly.propagation = MS_PRIVATE;
    const bool isMounted =
        unshare(CLONE_NEWNS) == 0 &&
        mount_setattr(AT_FDCWD, "/", AT_RECURSIVE, &readOnly, sizeof(readOnly)) == 0 &&
        move_mount(tree, "", AT_FDCWD, path, MOVE_MOUNT_F_EMPTY_PATH | MOVE_MOUNT_T_SYMLINKS) == 0;
    // The rules forbid to mount.
    if (isMounted && others == Processes::kHidden) {
        coverProcesses();
    }
    return isMounted && closeOtherProcesses(rules) ? 0 : errno;
}

// Why this machine grants no fence, 0 if it does. That a tree can be cloned tells nothing of the
// steps behind it, and a child that fails in one of them has done nothing.
int refusal(int directory, const char* path) {
    const Descriptor tree(cloneTree(directory));
    if (!tree.isOpen()) {
        return errno;
    }
    const int rules = domainRules().get();
    PipeEnds answer;
    if (!answer.open()) {
        return errno;
    }
    const pid_t pid = fork();
    if (pid < 0) {
        return errno;
    }
    if (pid == 0) {
        const int error = closeAround(tree.get(), path, rules, Processes::kShown);
        _exit(write(answer.writeEnd.get(), &error, sizeof(error)) == sizeof(error) ? 0 : 1);
    }
    // Not by the child's status, of which there is none where SIGCHLD is ignored.
    answer.writeEnd.reset();
    int error = 0;
    ssize_t got = 0;
    while ((got = read(answer.readEnd.get(), &error, sizeof(error))) < 0 && errno == EINTR) {
    }
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    return got == sizeof(error) ? error : ECHILD;
}

}  // namespace

WriteFence::WriteFence(int directory, std::string path)
    : rules_(domainRules().get()), path_(std::move(path)) {
    static const int refused = refusal(directory, path_.c_str());
    error_ = refused;
    if (error_ == 0) {
        tree_ = Descriptor(cloneTree(directory));
        error_ = tree_.isOpen() ? 0 : errno;
    }
}

int WriteFence::close(Processes others) const noexcept {
    return closeAround(tree_.get(), path_.c_str(), rules_, others);
}

}  // namespace zelvo
