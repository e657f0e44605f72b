#include "restore/objects/spam_filter.h"

#include <new>
#include <utility>

#include "restore/toolbox/list_operator.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

std::optional<std::string> falseIfOff(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(node.str(item) == "off" ? "false" : "true")
                           : std::nullopt;
}

bool hasServerFilter() {
    return panelCommand("spamassassin", {"--info-server"}).exec(std::nothrow) == 0;
}

std::string patternsOf(const XmlNode& node, const std::string& members) {
    std::string patterns;
    const tPeriodSeparatedListOperatorForSpamAssassin gatherer(patterns);
    forEachNode(node, members, [&](const XmlNode& member) { gatherer.act(member.node()); });
    return patterns;
}

// The changes of one list: "add:A,B;disable:C".
void appendList(const XmlNode& node, const std::string& list, CmdLine& cmd) {
    std::string changes;
    for (const auto& [verb, member] :
         {std::pair("add:", list + "-member"), std::pair("disable:", "un" + list + "-member")}) {
        const std::string patterns = patternsOf(node, member);
        if (!patterns.empty()) {
            changes += (changes.empty() ? "" : ";") + (verb + patterns);
        }
    }
    if (!changes.empty()) {
        cmd << "-" + list << changes;
    }
}

}  // namespace

std::optional<std::string> trueIfDelete(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(node.str(item) == "delete" ? "true" : "false")
                           : std::nullopt;
}

SpamassassinDeployer::SpamassassinDeployer(std::string domainName, std::string mailName,
                                           DomainMailRefferred& content)
    : domainName_(std::move(domainName)), mailName_(std::move(mailName)), content_(&content) {}

void SpamassassinDeployer::act(XmlNode node) const {
    CliExec cmd = hasServerFilter() ? setFilter(node) : greyListing();
    appendList(node, "blacklist", cmd);
    appendList(node, "whitelist", cmd);
    cmd.exec();
}

// The settings go out by themselves and, with the lists behind them, once more: entries that the
// filter refuses do not cost its settings.
CliExec SpamassassinDeployer::setFilter(const XmlNode& node) const {
    content_->addMailNameSpamassasin(node, mailName_);
    CliExec cmd = optionalUpdate("spamassassin", mailName_ + "@" + domainName_);
    appendOptions(node, cmd,
                  {{"-status", "@status", falseIfOff},
                   {"-hits", "@hits"},
                   {"-reject-spam", "@action", trueIfDelete},
                   {"-modify-subj-text", "@subj-text"}});
    cmd.exec();
    return cmd;
}

CliExec SpamassassinDeployer::greyListing() const {
    CliExec cmd = commandOn("grey_listing", "--update-mailname", mailName_ + "@" + domainName_);
    cmd.expectOptions();
    return cmd;
}

}  // namespace zelvo
