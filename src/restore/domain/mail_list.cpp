#include "restore/domain/mail_list.h"

#include <utility>

#include "commons/errors.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

constexpr const char* kAdd = "add:";
// In bytes. A call with more takes no further member; it keeps clear of how long an argument may
// be.
constexpr std::size_t kFullCall = 1000;

}  // namespace

tMaillistDeployer::tMaillistDeployer(std::string domainName, DomainMailListRefferred& content)
    : domainName_(std::move(domainName)), content_(&content) {}

void tMaillistDeployer::act(XmlNode node) const {
    const std::string name = node.str("@name");
    checkProgramTerminated();
    const ObjectLogger logger(name, "maillist");
    create(node, name);
    addMembers(node, name);
    setStatus(node, name);
    content_->addMailList(node, name);
}

void tMaillistDeployer::create(const XmlNode& node, const std::string& name) const {
    if (!node.test("owner")) {
        throw EXC(AssertionFailed) % "xpath_admin.getCBool()";
    }
    CliExec cmd = createCommand("maillist", name);
    cmd << "-domain" << domainName_ << "-email" << node.str("owner[position() = 1]");
    addPasswdToCmdLine(ensureNoEmptyPassword(passwd(node), "Maillist " + name), cmd);
    cmd.exec();
}

void tMaillistDeployer::addMembers(const XmlNode& node, const std::string& name) const {
    std::string members = kAdd;
    forEachNode(node, "recipient", [&](const XmlNode& recipient) {
        members += recipient.str(".") + ",";
        if (members.size() > kFullCall) {
            sendMembers(name, members);
            members = kAdd;
        }
    });
    if (members != kAdd) {
        sendMembers(name, members);
    }
}

void tMaillistDeployer::sendMembers(const std::string& name, const std::string& members) const {
    CliExec cmd = update(name);
    cmd << "-members" << members.substr(0, members.size() - 1);  // without the last comma
    cmd.exec();
}

void tMaillistDeployer::setStatus(const XmlNode& node, const std::string& name) const {
    CliExec cmd = update(name);
    addStatus(cmd, node.getNode("status"));
    cmd.exec();
}

CliExec tMaillistDeployer::update(const std::string& name) const {
    CliExec cmd = updateCommand("maillist", name);
    cmd << "-domain" << domainName_;
    return cmd;
}

}  // namespace zelvo
