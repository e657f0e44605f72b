// The account of a child that works on what a stranger wrote.
#pragma once

#include <sys/types.h>

namespace zelvo {

// A user and a group without anything on this machine but what is given to them.
class Outsider {
  public:
    // An account that no other process has: a number out of those that are left free for containers
    // and users alike, from 0x70000000 on, and this process's id. Whoever becomes it can start no
    // process, a shell neither.
    static Outsider unique();

    // user, group: of an account that others may be too, and not root's. As their processes count
    // with its own, whoever becomes it can start others.
    Outsider(uid_t user, gid_t group) : Outsider(user, group, false) {}

    gid_t group() const { return group_; }

    // Makes the calling process this account, for good: without other groups, and without the
    // rights that a program of another owner would give it. Returns 0 or an error number.
    // Async-signal-safe; to be called in the child.
    int become() const noexcept;

  private:
    Outsider(uid_t user, gid_t group, bool isAlone)
        : user_(user), group_(group), isAlone_(isAlone) {}

    uid_t user_;
    gid_t group_;
    bool isAlone_;
};

}  // namespace zelvo
