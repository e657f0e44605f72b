#include "lib/zelvo_ugid.h"

#include <grp.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "lib/libcommon.h"
#include "lib/liblog.h"

namespace {

// Calls a look-up of the C library, which leaves errno alone for what it does not find, so that a
// null always comes with an errno that tells why.
template <class LookUp>
auto lookUp(LookUp function) {
    errno = 0;
    auto* const found = function();
    if (found == nullptr && errno == 0) {
        errno = ENOENT;
    }
    return found;
}

const passwd* findUser(const char* name) {
    return lookUp([name] { return getpwnam(name); });
}

}  // namespace

uid_t get_user_id(const char* name) {
    const passwd* const user = findUser(name);
    if (user == nullptr) {
        messlog2(1, 0, "Unable to find uid for user %s: %s", name, strerror(errno));
    }
    return user->pw_uid;
}

const passwd* zelvo_getpw(const char* name) {
    const passwd* const user = findUser(name);
    if (user == nullptr) {
        messlog2(1, 0, "Unable to getpwnam for user %s", name);
    }
    return user;
}

int zelvo_ugid(const char* name, uid_t* uid, gid_t* gid) {
    const passwd* const user = findUser(name);
    if (user == nullptr) {
        return -1;
    }
    if (uid != nullptr) {
        *uid = user->pw_uid;
    }
    if (gid != nullptr) {
        *gid = user->pw_gid;
    }
    return 0;
}

gid_t get_group_id(const char* nameOrNumber) {
    if (is_number(nameOrNumber)) {
        gid_t gid = 0;
        const char* const end = nameOrNumber + strlen(nameOrNumber);
        if (std::from_chars(nameOrNumber, end, gid).ec == std::errc()) {
            return get_gid_by_id(gid);
        }
    }
    // A number that no id can have is looked up, and complained of, as a name.
    return get_gid_by_name(nameOrNumber);
}

gid_t get_gid_by_name(const char* name) {
    const group* const found = lookUp([name] { return getgrnam(name); });
    if (found == nullptr) {
        messlog2(1, 0, "getgrnam(%s): %s", name, strerror(errno));
    }
    return found->gr_gid;
}

gid_t get_gid_by_id(gid_t gid) {
    const group* const found = lookUp([gid] { return getgrgid(gid); });
    if (found == nullptr) {
        messlog2(1, 0, "getgrgid(%d): %s", static_cast<int>(gid), strerror(errno));
    }
    return found->gr_gid;
}

const char* get_user_name(uid_t uid) {
    static char name[256];
    if (const passwd* const user = getpwuid(uid)) {
        snprintf(name, sizeof(name), "%s", user->pw_name);
    } else {
        snprintf(name, sizeof(name), "%u", uid);
    }
    return name;
}
