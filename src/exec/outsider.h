// The account of a child that works on what a stranger wrote.
#pragma once

#include <sys/types.h>

#include <optional>

namespace zelvo {

// A user and a group, of one number, without anything on this machine but what is given to them,
// and which no other process has. Whoever becomes it can start no process, a shell neither, and
// write to no regular file: that fails with EFBIG (POSIX RLIMIT_FSIZE, SIGXFSZ is ignored).
class Outsider {
  public:
    // The number is out of those that are left free for containers and users alike, from 0x70000000
    // on, and this process's id.
    static Outsider unique();

    // The same where a user namespace has numbers of 16 bits only: one of 60578 to 61183, which
    // systems leave free, and of those one without a name (POSIX getpwuid, getgrgid), begun with
    // this process's id. Empty where all have names.
    static std::optional<Outsider> uniqueOfSmall();

    gid_t group() const { return id_; }

    // Makes the calling process this account, for good: without other groups, and without the
    // rights that a program of another owner would give it. Returns 0 or an error number.
    // Async-signal-safe; to be called in the child.
    int become() const noexcept;

  private:
    explicit Outsider(uid_t id) : id_(id) {}

    uid_t id_;
};

}  // namespace zelvo
