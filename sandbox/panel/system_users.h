// The accounts of the box's system, in /etc/passwd and /etc/group. They are read here and not by
// getpwnam(3), which has no place in a static program.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace sandbox {

struct SystemUser {
    std::string login;
    uid_t id = 0;
    std::string home;
    std::string shell;
};

std::optional<uid_t> systemUserId(const std::string& login);
bool isSystemUserId(uid_t id);  // whether there is an account with it

// Throws std::runtime_error when there is no such group.
gid_t systemGroupId(const std::string& name);

// Makes the account, in the customers' group, in place of the one that had this id. Whoever reads
// the file meanwhile sees it as it was or as it is. Throws std::runtime_error.
void putSystemUser(const SystemUser& user);
// Does nothing when there is no such account.
void removeSystemUser(const std::string& login);

}  // namespace sandbox
