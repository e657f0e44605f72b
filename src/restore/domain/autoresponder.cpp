#include "restore/domain/autoresponder.h"

#include <optional>
#include <utility>

#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/encoded_text.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

std::optional<std::string> holds(const XmlNode& node, const char* expr) {
    return node.test(expr) ? "true" : "false";
}

std::optional<std::string> fromBase64(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(textOfBase64(node.str(item), item)) : std::nullopt;
}

// Plain text, which is anything else, needs no word.
std::optional<std::string> htmlAlone(const XmlNode& node, const char* item) {
    return node.str(item) == "text/html" ? std::optional<std::string>("html") : std::nullopt;
}

}  // namespace

AutorespondersDeployer::AutorespondersDeployer(MailName user, DomainMailRefferred& content)
    : user_(std::move(user)), content_(&content) {}

void AutorespondersDeployer::act(XmlNode node) const {
    content_->addMailNameResponder(node, user_.name);
    deployEach(node, "attach", AutoresponderAttachDeployer(user_, *content_));
    deployEach(node, "autoresponder", AutoresponderDeployer(user_, *content_));
    if (node.test("@enabled")) {
        const bool isOn = node.test("@enabled = 'true'");
        commandOn("autoresponder", isOn ? "--on" : "--off", user_.full()).exec();
    }
}

AutoresponderAttachDeployer::AutoresponderAttachDeployer(MailName user,
                                                         DomainMailRefferred& content)
    : user_(std::move(user)), content_(&content) {}

void AutoresponderAttachDeployer::act(XmlNode node) const {
    content_->addMailNameRespondersAttaches(user_.name, {node.str("@file")});
}

AutoresponderDeployer::AutoresponderDeployer(MailName user, DomainMailRefferred& content)
    : user_(std::move(user)), content_(&content) {}

void AutoresponderDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    const tDeployAction action(node);
    const std::string name = node.str("@name");
    const ObjectLogger logger(name, "autoresponder");
    if (tDeployAction::DeployActionSummaryUpdate(action.action())) {
        createOrUpdate(node, name);
    } else if (action.DeployActionDelete()) {
        CliExec cmd = commandOn("autoresponder", "-d", name);
        cmd << "-mail" << user_.full();
        cmd.exec();
    }
}

void AutoresponderDeployer::createOrUpdate(const XmlNode& node, const std::string& name) const {
    const bool isNew = tDeployAction(node).DeployActionCreate();
    CliExec cmd = commandOn("autoresponder", isNew ? "-c" : "-u", name);
    cmd << "-mail" << user_.full();
    appendOptions(node, cmd,
                  {{"-status", "not(@status = 'off')", holds},
                   {"-requires", "@require"},
                   {"-replyto", "@replyto"},
                   {"-redirect", "@redirect"},
                   {"-subject", "@subject", fromBase64},
                   {"-format", "@content-type", htmlAlone},
                   {"-charset", "text/@charset", upperCase},
                   {"-text", "text/text()", fromBase64},
                   {"-frq", "autoresponder-limit[@name='ans-freq']"},
                   {"-store", "autoresponder-limit[@name='ans-count']"}});
    gatherAttachments(node, name);
    cmd.exec();
}

void AutoresponderDeployer::gatherAttachments(const XmlNode& node, const std::string& name) const {
    DomainMailRefferred::Files files;
    forEachNode(node, "attach/@file", [&files](const XmlNode& file) {
        if (std::string path = file.str("."); !path.empty()) {
            files.push_back(std::move(path));
        }
    });
    if (!files.empty()) {
        content_->addMailNameResponderAttach(user_.name, name, files);
    }
}

}  // namespace zelvo
