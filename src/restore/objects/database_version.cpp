#include "restore/objects/database_version.h"

#include <boost/regex.hpp>

#include "lib/version.h"
#include "restore/toolbox/pkg_version.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

namespace {

// Whether the panel's PostgreSQL is older than the one that the dump is of. A version that is not
// known is not older.
bool isOlderPostgresql(const std::string& dumpVersion) {
    if (dumpVersion.empty()) {
        return false;
    }
    static const boost::regex kThreeParts("(\\d+\\.\\d+\\.\\d+).*");
    const std::string installed = getPkgVersion("postgresql-server");
    boost::smatch match;
    Version local;
    Version ofDump;
    if (boost::regex_match(installed, match, kThreeParts)) {
        local.setVersionData(match.str(1).c_str());
        ofDump.setVersionData(dumpVersion.c_str());
    }
    return local.isLess(ofDump);
}

}  // namespace

bool isNewStyleMysqlPassword(const std::string& password) { return password.starts_with('*'); }

bool isMysqlSupportNewStylePassword(const std::string& version) {
    return !version.starts_with("3") && !version.starts_with("4.0") &&
           !version.starts_with("4.1.0");
}

bool panelSupportsNewStylePassword() {
    return isMysqlSupportNewStylePassword(getPkgVersion("mysql"));
}

void requireServerForDump(const XmlNode& node, const std::string& domainName) {
    const std::string name = node.str("@name");
    const std::string version = node.str("@version");
    if (node.str("@type") == "postgresql") {
        if (isOlderPostgresql(version)) {
            throw EXC(PostgresMigrationIsImpossibleToLowerVersion) % domainName % name;
        }
    } else if (isMysqlSupportNewStylePassword(version) && !panelSupportsNewStylePassword()) {
        throw EXC(IncompatibleDbPasswordVersion) % name;
    }
}

}  // namespace zelvo
