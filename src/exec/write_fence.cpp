#include "exec/write_fence.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
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

int closeAround(int tree, const char* path) noexcept {
    mount_attr readOnly{};
    readOnly.attr_set = MOUNT_ATTR_RDONLY;
    // Or what is mounted here would be so on the machine.
    readOnly.propagation = MS_PRIVATE;
    const bool isClosed =
        unshare(CLONE_NEWNS) == 0 &&
        mount_setattr(AT_FDCWD, "/", AT_RECURSIVE, &readOnly, sizeof(readOnly)) == 0 &&
        move_mount(tree, "", AT_FDCWD, path, MOVE_MOUNT_F_EMPTY_PATH | MOVE_MOUNT_T_SYMLINKS) == 0;
    return isClosed ? 0 : errno;
}

// Why this machine grants no fence, 0 if it does. That a tree can be cloned tells nothing of the
// steps behind it, and a child that fails in one of them has done nothing.
int refusal(int directory, const char* path) {
    const Descriptor tree(cloneTree(directory));
    if (!tree.isOpen()) {
        return errno;
    }
    Pipe answer;
    if (!answer.open()) {
        return errno;
    }
    const pid_t pid = fork();
    if (pid < 0) {
        return errno;
    }
    if (pid == 0) {
        const int error = closeAround(tree.get(), path);
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

WriteFence::WriteFence(int directory, std::string path) : path_(std::move(path)) {
    static const int refused = refusal(directory, path_.c_str());
    error_ = refused;
    if (error_ == 0) {
        tree_ = Descriptor(cloneTree(directory));
        error_ = tree_.isOpen() ? 0 : errno;
    }
}

int WriteFence::close() const noexcept { return closeAround(tree_.get(), path_.c_str()); }

}  // namespace zelvo
