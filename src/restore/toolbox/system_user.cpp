// What a login on the system needs: a password, a name, a quota, a shell.
#include <boost/algorithm/string/case_conv.hpp>

#include "report/debug_log.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/limit_number.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/shells.h"

namespace zelvo {

void tDeployDocAbility::getPasswordOpts(const XmlNode& node, CmdLine& cmd) {
    addPasswdToCmdLine(ensureNoEmptyPassword(passwd(node), "sysuser"), cmd);
}

void tDeployDocAbility::getSysUserOpts(const XmlNode& node, CmdLine& cmd, bool lowerName,
                                       bool full) {
    std::string name = node.str("@name");
    if (lowerName && boost::to_lower_copy(name) != name) {
        theDebugLog->log("Converting name " + name + " to lower case");
        boost::to_lower(name);
    }
    cmd << "-login" << name;
    getPasswordOpts(node, cmd);
    if (full && node.test("@quota") && node.str("@quota") != "-1") {
        cmd << "-hard_quota" << limitNumber(node.str("@quota"), "Sysuser " + name);
    }
    if (node.test("@shell")) {
        cmd << "-shell" << fixShell(node.str("@shell"));
    }
}

}  // namespace zelvo
