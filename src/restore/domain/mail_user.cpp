#include "restore/domain/mail_user.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "report/debug_log.h"
#include "report/error_functions.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/domain/address_book.h"
#include "restore/domain/autoresponder.h"
#include "restore/objects/custom_button.h"
#include "restore/objects/spam_filter.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/list_operator.h"
#include "restore/toolbox/option_name.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/whole_number.h"

namespace zelvo {

namespace {

// Of an element that is on unless it says otherwise.
std::optional<std::string> onIfThere(const XmlNode& node, const char* item) {
    if (!node.test(item)) {
        return std::nullopt;
    }
    return node.test(std::string(item) + "/@enabled = 'false'") ? "false" : "true";
}

// A negative quota is none.
std::optional<std::string> quota(const XmlNode& node, const char* item) {
    const std::optional<std::string> text = ifSet(node, item);
    if (!text) {
        return std::nullopt;
    }
    const std::int64_t bytes = wholeNumber(*text, "mailbox quota of '" + node.str("@name") + "'");
    return bytes < 0 ? std::nullopt : std::optional(std::to_string(bytes));
}

// An option that takes a list of items behind a verb.
struct ListOption {
    const char* option;
    const char* verb;
    const char* items;
    // The action word of the items that count; empty for those to be created.
    const char* action;
};

void appendList(const XmlNode& node, CmdLine& cmd, const ListOption& row) {
    std::string list;
    const tPeriodSeparatedListOperator gather(list, row.action);
    node.foreach (
        row.items, [&gather](const XmlNode& item) { gather.act(item.node()); }, deploy_error_func);
    if (!list.empty()) {
        cmd << row.option << row.verb + list;
    }
}

// A permission is an option of its own, and none that says something else of the mail user.
void appendPermission(CmdLine& cmd, const XmlNode& permission) {
    requireOptionName(permission.str("@name"), "a permission",
                      {"passwd", "mailbox", "mbox_quota", "redirect", "rediraddr", "aliases",
                       "group", "groupmem", "max-button-length", "lock-screen"});
    addPermission(cmd, permission);
}

void setVirusFilter(const XmlNode& node, const MailName& user) {
    const std::string state = node.str("preferences/virusfilter/@state");
    if (!state.empty()) {
        CliExec cmd = updateCommand("mail", user.full());
        cmd << "-antivirus" << state;
        cmd.exec();
    }
}

}  // namespace

tMailuserDeployer::tMailuserDeployer(std::string domainName, DomainMailRefferred& content)
    : domainName_(std::move(domainName)), content_(&content) {}

void tMailuserDeployer::act(XmlNode node) const {
    const MailName user{node.str("@name"), domainName_};
    const ObjectLogger logger(user.full(), "mailname");
    checkProgramTerminated();
    wrapped(EXC(FailedMailuserDeployment) % user.name % user.domain,
            [&] { deployUser(node, user); });
    if (tDeployAction::DeployActionSummaryUpdate(tDeployAction(node).action())) {
        deployBelongings(node, user);
    }
}

void tMailuserDeployer::deployUser(const XmlNode& node, const MailName& user) {
    const tDeployAction action(node);
    if (action.DeployActionDelete()) {
        commandOn("mail", "--delete", user.full()).exec();
    } else if (tDeployAction::DeployActionSummaryUpdate(action.action())) {
        CliExec cmd = action.DeployActionCreate() ? createCommand("mail", user.full())
                                                  : updateCommand("mail", user.full());
        appendSettings(node, cmd);
        cmd.exec();
        tryInstallSkin(node, "mail", user.full());
    }
}

void tMailuserDeployer::appendSettings(const XmlNode& node, CmdLine& cmd) {
    addPasswdToCmdLine(passwd(node), cmd);
    getMailboxOpts(node, cmd);
    getRedirectOpts(node, cmd);
    appendList(node, cmd, {"-aliases", "add:", "preferences/alias", "create"});
    appendList(node, cmd, {"-aliases", "del:", "preferences/alias", "delete"});
    appendOptions(node, cmd, {{"-group", "@mailgroup-enabled = 'true'", trueIf}});
    node.foreach (
        "limits-and-permissions/mailuser-permission",
        [&cmd](const XmlNode& permission) { appendPermission(cmd, permission); },
        deploy_error_func);
    appendList(node, cmd, {"-groupmem", "add:", "preferences/mailgroup-member", ""});
    getMaxButtonLength(node, cmd);
    getLockScreen(node, cmd);
}

void tMailuserDeployer::getMailboxOpts(const XmlNode& node, CmdLine& cmd) {
    appendOptions(node, cmd,
                  {{"-mailbox", "(preferences/mailbox)[1]", onIfThere},
                   {"-mbox_quota", "@mailbox-quota", quota}});
}

bool tMailuserDeployer::getRedirectOpts(const XmlNode& node, CmdLine& cmd) {
    return appendOptions(
        node, cmd,
        {{"-redirect", "preferences/redirect", onIfThere}, {"-rediraddr", "preferences/redirect"}});
}

void tMailuserDeployer::deployBelongings(const XmlNode& node, const MailName& user) const {
    gatherMailbox(node, user);
    deployEach(node, "preferences/autoresponders", AutorespondersDeployer(user, *content_));
    deployEach(node, "preferences/addressbook/addressbook-contact",
               AddressbookContactDeployer(user.full()));
    deployEach(node, "preferences/addressbook/addressbook-group",
               AddressbookGroupDeployer(user.full()));
    deployEach(node, "preferences/spamassassin",
               SpamassassinDeployer(user.domain, user.name, *content_));
    setVirusFilter(node, user);
    deployEach(node, "preferences/custom-button", CustomButtonDeployer(user.full()));
}

void tMailuserDeployer::gatherMailbox(const XmlNode& node, const MailName& user) const {
    if (node.test("preferences/mailbox")) {
        const XmlNode mailbox = node.getNode("preferences/mailbox");
        if (!mailbox.test("@enabled = 'false'")) {
            theDebugLog->log("Unpacking the mailbox...");
            content_->addMailName(mailbox, user.name);
        }
    }
}

}  // namespace zelvo
