#include "restore/domain/web_user.h"

#include <utility>

#include "content/unsafe_name.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/objects/cron.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/limit_number.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

tWebuserDeployer::tWebuserDeployer(DomainInfo domain, DomainVHostRefferred& content)
    : domain_(std::move(domain)), content_(&content) {}

void tWebuserDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    const std::string login = node.getNode("sysuser").str("@name");
    const ObjectLogger logger(login, "web user");
    wrapped(EXC(FailedWebuserDeployment) % login % domain_.name, [&] { deployUser(node, login); });
}

void tWebuserDeployer::deployUser(const XmlNode& node, const std::string& login) const {
    const tDeployAction action(node);
    if (action.DeployActionDelete()) {
        CliExec cmd = commandOn("webuser", "--delete", login);
        cmd << "-domain" << domain_.name;
        cmd.exec();
        return;
    }
    const bool isWritten = tDeployAction::DeployActionSummaryUpdate(action.action());
    if (isWritten) {
        createOrUpdate(node, login);
    }
    if (node.test("@wu_script='true'")) {
        allowScripts(node, login);
    }
    if (isWritten) {
        deployContent(node, login);
    }
}

void tWebuserDeployer::createOrUpdate(const XmlNode& node, const std::string& login) const {
    const XmlNode sysuser = node.getNode("sysuser");
    CliExec cmd = tDeployAction(node).DeployActionCreate() ? createCommand("webuser", login)
                                                           : updateCommand("webuser", login);
    cmd << "-domain" << domain_.name;
    if (sysuser.test("@quota")) {
        cmd << "-quota" << limitNumber(sysuser.str("@quota"), "Webuser " + login);
    }
    getPasswordOpts(sysuser, cmd);
    cmd.exec();
}

void tWebuserDeployer::allowScripts(const XmlNode& node, const std::string& login) const {
    CliExec cmd = updateCommand("webuser", login);
    cmd << "-domain" << domain_.name;
    const std::string ofLimits = "limits-and-permissions/scripting";
    NamedValues sent;
    getScriptingOpts(node.getNode(node.test(ofLimits) ? ofLimits : "scripting"), false, cmd, sent);
    // A language that this server lacks is no reason to refuse the others.
    cmd.setEnv("NO_CHECK_COMPONENTS", "1");
    cmd.exec();
}

void tWebuserDeployer::deployContent(const XmlNode& node, const std::string& login) const {
    theDebugLog->log("Trying to deploy webuser " + login + " content");
    content_->addDomainWebUser(node, requireComponent(login, "a web user"));
    deployCronTables(node.getNode("sysuser"));
}

}  // namespace zelvo
