#include "content/content_owner.h"

#include <sys/types.h>

#include <boost/algorithm/string/case_conv.hpp>
#include <fstream>
#include <locale>
#include <optional>
#include <sstream>

#include "content/accounts.h"
#include "content/content_errors.h"
#include "lib/zelvo_ugid.h"

namespace zelvo {

namespace {

constexpr uid_t kNobody = 65534;

// The lowest id of an account that is a person's (login.defs(5)).
uid_t readFirstPersonalId() {
    std::ifstream definitions("/etc/login.defs");
    for (std::string line; std::getline(definitions, line);) {
        std::istringstream words(line);
        std::string name;
        uid_t id = 0;
        if (words >> name >> id && name == "UID_MIN") {
            return id;
        }
    }
    return 1000;
}

std::optional<uid_t> idOf(const std::string& name) {
    uid_t id = 0;
    return zelvo_ugid(name.c_str(), &id, nullptr) == 0 ? std::optional(id) : std::nullopt;
}

bool isCustomers(uid_t id) {
    static const uid_t firstPersonalId = readFirstPersonalId();
    for (const char* own : {accounts::kMail, accounts::kPanel, accounts::kMailList}) {
        if (idOf(own) == id) {
            return false;
        }
    }
    return id >= firstPersonalId && id != kNobody;
}

}  // namespace

std::string contentOwner(const std::string& name) {
    if (name.empty() || name.starts_with('-') || name.find('\0') != std::string::npos) {
        throw EXC(UnsuitableOwner) % name % "it is no name of a system user";
    }
    const std::string lower = boost::to_lower_copy(name, std::locale::classic());
    for (const std::string& candidate : {name, lower}) {
        if (const std::optional<uid_t> id = idOf(candidate)) {
            if (!isCustomers(*id)) {
                throw EXC(UnsuitableOwner) % name % "it is an account of the system or the panel";
            }
            return candidate;
        }
    }
    throw EXC(UnsuitableOwner) % name % "the system has no such user";
}

}  // namespace zelvo
