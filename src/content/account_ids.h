// The numbers of users and groups that own content.
#pragma once

#include <sys/types.h>

#include <string>

namespace zelvo {

// Both raise UnsuitableOwner for a name that the system does not know: a machine without the
// account loses the content, and not the whole run.
uid_t userId(const std::string& user);
// "root" and "0" are the group with id 0.
gid_t groupId(const std::string& group);

}  // namespace zelvo
