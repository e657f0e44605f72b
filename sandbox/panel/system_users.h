// The accounts of the box's system, in /etc/passwd. They are read here and not by getpwnam(3),
// which has no place in a static program.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace sandbox {

struct Ids {
    uid_t user = 0;
    gid_t group = 0;
};

// Of an account, or nothing when the system has no such one.
std::optional<Ids> systemUserIds(const std::string& login);

}  // namespace sandbox
