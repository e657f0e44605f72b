#include "restore/server/server_spam.h"

#include <optional>
#include <string>

#include "report/debug_log.h"
#include "restore/objects/spam_filter.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

std::optional<std::string> onOrOff(const XmlNode& node, const char* item) {
    return node.test(item) ? std::optional(node.str(item) == "true" ? "on" : "off") : std::nullopt;
}

std::optional<std::string> added(const XmlNode& node, const char* item) {
    const std::optional<std::string> list = joinedIfThere(node, item);
    return list ? std::optional("add:" + *list) : std::nullopt;
}

// The server's own settings, of which there is none to be named.
CliExec updateServer(const char* utility) {
    CliExec cmd = panelCommand(utility, {"--update-server"});
    cmd.expectOptions();
    return cmd;
}

void setGreyListing(const XmlNode& node) {
    theDebugLog->log(std::string("Grey listing settings deployment"));
    if (panelCommand("grey_listing", {"--info-server"}).exec(std::nothrow) != 0) {
        return;
    }
    CliExec cmd = updateServer("grey_listing");
    appendOptions(node, cmd,
                  {{"-grey-interval", "@grey-interval"},
                   {"-expire-interval", "@expire-interval"},
                   {"-penalty-status", "@penalty-enabled"},
                   {"-penalty-interval", "@penalty-interval"},
                   {"-status", "@enabled", onOrOff},
                   {"-personal-conf", "@personal-conf"},
                   {"-domains-whitelist", "white-list/list-item", added}});
    cmd.exec();
}

void setSpamFilter(const XmlNode& node) {
    theDebugLog->log(std::string("Spamassassin server settings deployment"));
    CliExec cmd = updateServer("spamassassin");
    appendOptions(node, cmd,
                  {{"-status", "@status"},
                   {"-hits", "@hits"},
                   {"-reject-spam", "@action", trueIfDelete},
                   {"-modify-subj-text", "@subj-text"},
                   {"-blacklist", "blacklist-member", joinedIfThere},
                   {"-whitelist", "whitelist-member", joinedIfThere}});
    cmd.exec();
}

}  // namespace

void deploySpamSettings(const XmlNode& server) {
    if (server.test("grey-listing")) {
        setGreyListing(server.getNode("grey-listing"));
    }
    if (server.test("spamassassin")) {
        setSpamFilter(server.getNode("spamassassin"));
    }
}

}  // namespace zelvo
