#include "exec/write_fence.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <utility>

namespace zelvo {

WriteFence::WriteFence(int directory, std::string path)
    : tree_(open_tree(directory, "",
                      AT_EMPTY_PATH | AT_RECURSIVE | OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC)),
      error_(tree_.isOpen() ? 0 : errno),
      path_(std::move(path)) {}

int WriteFence::close() const noexcept {
    mount_attr readOnly{};
    readOnly.attr_set = MOUNT_ATTR_RDONLY;
    // Private first, or what is mounted here would be so on the machine.
    const bool isClosed =
        unshare(CLONE_NEWNS) == 0 &&
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        mount_setattr(AT_FDCWD, "/", AT_RECURSIVE, &readOnly, sizeof(readOnly)) == 0 &&
        move_mount(tree_.get(), "", AT_FDCWD, path_.c_str(), MOVE_MOUNT_F_EMPTY_PATH) == 0;
    return isClosed ? 0 : errno;
}

}  // namespace zelvo
