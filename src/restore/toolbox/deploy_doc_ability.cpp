#include "restore/toolbox/deploy_doc_ability.h"

#include "commons/errors.h"
#include "report/guard.h"
#include "restore/toolbox/option_name.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

_xmlDoc* tDeployDocAbility::doc_ = nullptr;
_xmlNode* tDeployDocAbility::xnode_root_ = nullptr;
XmlNode tDeployDocAbility::root(nullptr, nullptr);
std::string tDeployDocAbility::domainTemplate;
bool tDeployDocAbility::notifyUsers = false;
std::shared_ptr<ContentUnpacker> tDeployDocAbility::extractor;
std::string tDeployDocAbility::backupUser;
std::string tDeployDocAbility::backupUserType;
bool tDeployDocAbility::suspend = false;
tDeployProgressReport* tDeployDocAbility::report_ptr_ = nullptr;

namespace {

std::string cidPath(const std::string& type) { return "content/cid[@type='" + type + "']"; }

}  // namespace

void tDeployDocAbility::getLockScreen(const XmlNode& node, CmdLine& cmd) {
    appendOptions(node, cmd, {{"-lock-screen", "@lock-screen = 'false'", falseIf}});
}

void tDeployDocAbility::getMaxButtonLength(const XmlNode& node, CmdLine& cmd) {
    appendOptions(node, cmd, {{"-max-button-length", "@max-button-length"}});
}

std::string tDeployDocAbility::parseStatus(const XmlNode& node) {
    if (node.test("enabled")) {
        return "enabled";
    }
    return *joined(node, "disabled-by/@name");
}

void tDeployDocAbility::addStatus(CmdLine& cmd, const XmlNode& node) {
    cmd << "-status" << parseStatus(node);
}

bool tDeployDocAbility::hasCid(const XmlNode& node, const std::string& type) {
    return node.test(cidPath(type));
}

Cid tDeployDocAbility::getCid(const XmlNode& node, const std::string& type) {
    return Cid(node.getNode(cidPath(type)));
}

bool tDeployDocAbility::getCid(const XmlNode& node, const std::string& type, Cid& cid) {
    if (!hasCid(node, type)) {
        return false;
    }
    cid = getCid(node, type);
    return true;
}

void tDeployDocAbility::unzipdb(const std::string& database, const std::string& type,
                                const Cid& cid, const std::string& login,
                                const std::string& password, const std::string& host,
                                const std::string& port) {
    extractor->unpackDb(cid, {type, login, password, host, port}, database);
}

void tDeployDocAbility::tryInstallSkin(const XmlNode& node, const std::string& utility,
                                       const std::string& name) {
    if (node.test("@skin")) {
        debugLogged([&] {
            CliExec cmd = updateCommand(utility, name);
            appendOptions(node, cmd, {{"-skin", "@skin"}});
            cmd.exec();
        });
    }
}

bool deployEach(const XmlNode& node, const std::string& expr, const XmlDeployDocAbility& deployer) {
    return guardedEach(node, expr, [&deployer](const XmlNode& found) { deployer.act(found); });
}

void addPermission(CmdLine& cmd, const XmlNode& permission) {
    const std::string option = "-" + requireAccountOption(permission.str("@name"), "a permission");
    appendOptions(permission, cmd, {{option.c_str(), "@value", falseOrTrue}});
}

}  // namespace zelvo
