#include "content/front_page.h"

#include <sys/stat.h>

#include "content/account_ids.h"
#include "content/accounts.h"
#include "exec/beneath.h"
#include "lib/sed.h"

namespace zelvo {

namespace {

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

bool isOfExtensions(const std::string& file) { return contains(file, "_vti_"); }

bool isAccessFile(const std::string& file) {
    return contains(file, "/.htaccess") || contains(file, "/access.cnf");
}

// A text that cannot end its part of an "s|||" expression: sed has commands that start programs and
// write files.
std::string quotedForSed(const std::string& text) {
    std::string quoted;
    for (const char c : text) {
        if (c == '|' || c == '\\' || c == '&' || c == '\n') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted;
}

// A link would be read through and be replaced by a copy of what it names.
bool isRegular(const std::string& file) {
    struct stat status {};
    return lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

bool isMendedByName(const std::string& file) { return isOfExtensions(file) || isAccessFile(file); }

void apply_hosting_cid_with_fp(const std::string& domain, const std::string& destination,
                               const std::string& file) {
    if (isOfExtensions(file)) {
        // The file's path is a full one already, so this names nothing as a rule.
        lchownBeneath(destination, destination + "/" + file, static_cast<uid_t>(-1),
                      groupId(accounts::kWebServer));
    }
    if (isAccessFile(file) && isRegular(file)) {
        const std::string expression =
            "s|/.*/" + quotedForSed(domain) + "/https*docs/|" + quotedForSed(destination) + "/|g";
        run_sed_cmd(expression.c_str(), file.c_str());
    }
}

}  // namespace zelvo
