// Keeps a child from writing anywhere but below one directory, wherever names and links lead it.
#pragma once

#include <string>

#include "exec/descriptor.h"

namespace zelvo {

// Whether the child finds other processes than those of its user in /proc.
enum class Processes { kShown, kHidden };

// The child sees the whole machine as it is, but read-only: a mount namespace of its own, in which
// only this directory can be written to (Linux mount_setattr). What it does to a file elsewhere, be
// it a change of owner or mode or a hard link, fails with EROFS or EXDEV. Serves one child.
class WriteFence {
  public:
    // directory: an open descriptor of the directory; stays the caller's. What is mounted below it
    // can be written to as well. path: absolute, where the child looks for it; also behind a link
    // it finds this directory. Where the system grants no such view (a kernel before 5.12, a
    // container without rights to mount), the fence is none; a child tries that once in a process.
    WriteFence(int directory, std::string path);

    bool isReady() const { return tree_.isOpen(); }
    // Why it is not: an error number.
    int error() const { return error_; }

    // Puts the calling process behind the fence. others: are hidden where the system lets /proc be
    // covered. Returns 0 or an error number. Async-signal-safe; to be called in the child.
    int close(Processes others) const noexcept;

  private:
    Descriptor tree_;
    int error_ = 0;
    // The process's own, or -1.
    int rules_;
    std::string path_;
};

}  // namespace zelvo
