#include "content/account_ids.h"

#include <grp.h>

#include "content/accounts.h"
#include "content/content_errors.h"
#include "lib/zelvo_ugid.h"

namespace zelvo {

uid_t userId(const std::string& user) {
    uid_t id = 0;
    if (zelvo_ugid(user.c_str(), &id, nullptr) != 0) {
        throw EXC(UnsuitableOwner) % user % "the system has no such user";
    }
    return id;
}

gid_t groupId(const std::string& group) {
    if (group == accounts::kRoot || group == accounts::kRootGroup) {
        return 0;
    }
    const ::group* const found = getgrnam(group.c_str());
    if (found == nullptr) {
        throw EXC(UnsuitableOwner) % group % "the system has no such group";
    }
    return found->gr_gid;
}

}  // namespace zelvo
