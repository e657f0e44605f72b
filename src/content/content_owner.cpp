#include "content/content_owner.h"

#include <grp.h>
#include <pwd.h>

#include <boost/algorithm/string/case_conv.hpp>
#include <locale>

#include "commons/files.h"
#include "content/accounts.h"
#include "content/content_errors.h"

namespace zelvo {

namespace {

bool isPanelsOwn(const std::string& name) {
    return name == accounts::kPanel || name == accounts::kMail || name == accounts::kMailList;
}

// The panel makes its customers' accounts in their group, with homes in their sites.
bool isCustomers(const ::passwd& account) {
    const group* const customers = getgrnam(accounts::kCustomers);
    const bool isInGroup = customers != nullptr && customers->gr_gid == account.pw_gid;
    const bool livesInSite = std::string(account.pw_dir).starts_with(files::getVhostsDir() + "/");
    return account.pw_uid != 0 && !isPanelsOwn(account.pw_name) && (isInGroup || livesInSite);
}

}  // namespace

std::string contentOwner(const std::string& name) {
    if (name.empty() || name.starts_with('-') || name.find('\0') != std::string::npos) {
        throw EXC(UnsuitableOwner) % name % "it is no name of a system user";
    }
    const std::string lower = boost::to_lower_copy(name, std::locale::classic());
    for (const std::string& candidate : {name, lower}) {
        if (const ::passwd* const account = getpwnam(candidate.c_str())) {
            if (!isCustomers(*account)) {
                throw EXC(UnsuitableOwner) % name % "it is no account of a customer";
            }
            return candidate;
        }
    }
    throw EXC(UnsuitableOwner) % name % "the system has no such user";
}

}  // namespace zelvo
