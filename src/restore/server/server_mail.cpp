#include "restore/server/server_mail.h"

#include <optional>
#include <string>
#include <utility>

#include "content/unsafe_name.h"
#include "report/debug_log.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/try_settings.h"

namespace zelvo {

namespace {

using Value = std::optional<std::string>;

// The values stand where the utility also looks for options.
Value refuseOption(Value value) {
    if (value) {
        requireNoOption(*value, "a setting of the mail server");
    }
    return value;
}

Value word(const XmlNode& node, const char* item) { return refuseOption(ifThere(node, item)); }

Value list(const XmlNode& node, const char* item) {
    return refuseOption(joinedIfThere(node, item));
}

// A size below 0 is a bound like others, and no option.
Value size(const XmlNode& node, const char* item) {
    Value value = ifThere(node, item);
    const bool isBelowZero = value && value->size() > 1 && value->front() == '-' &&
                             value->find_first_not_of("0123456789", 1) == std::string::npos;
    return isBelowZero ? value : refuseOption(std::move(value));
}

Value accountType(const XmlNode& node, const char* item) {
    Value value = word(node, item);
    return value == "false" ? "full" : value;
}

// Which ways of proving who one is open the relay.
Value authType(const XmlNode& node, const char*) {
    const bool isPop = node.test("@pop-auth = 'true'");
    const bool isSmtp = node.test("@smtp-auth = 'true'");
    if (isPop && isSmtp) {
        return "both";
    }
    return isPop ? Value("pop3") : isSmtp ? Value("smtp") : std::nullopt;
}

void setSpf(const XmlNode& settings) {
    trySettings(settings, panelCommand("mailserver", {"--update-spf"}),
                {{"-spf-status", "spf/@status"},
                 {"-spf-behavior", "spf/@spf-behavior"},
                 {"-spf-rules", "spf/spf-rules"},
                 {"-spf-guess", "spf/spf-guess"},
                 {"-spf-exp", "spf/spf-exp"}});
}

void signOutgoingMail(const XmlNode& settings) {
    CliExec cmd = panelCommand("mailserver");
    if (appendOptions(settings, cmd, {{"--sign-outgoing-mail", "@sign-outgoing-mail", word}})) {
        cmd.exec();
    }
}

}  // namespace

void deployServerMail(const XmlNode& settings) {
    theDebugLog->log(std::string("Server mail settings deployment"));
    const CliExec head = panelCommand("mailserver");
    if (settings.test("@relay")) {
        trySettings(settings, head,
                    {{"--set-relay", "@relay", word},
                     {"-auth-type", "", authType},
                     {"-lock-time", "@poplock-time"}});
    }
    tryEachSetting(settings, head,
                   {{"--set-max-letter-size", "@max-letter-size", size},
                    {"--set-maps-status", "rbl[rbl-server != '']/@status", word},
                    {"--set-account-type", "@short-pop3-names", accountType},
                    {"--use-vocabulary", "@use-vocabulary", word}});
    setSpf(settings);
    tryEachSetting(settings, head,
                   {{"--add-to-black-list", "black-list/list-item", list},
                    {"--add-to-white-list", "white-list/list-item", list},
                    {"--set-message-submission", "@message-submission", word}});
    signOutgoingMail(settings);
    tryEachSetting(settings, head,
                   {{"--verify-incoming-mail", "@verify-incoming-mail", word},
                    {"--set-maps-zone", "rbl/rbl-server", word}});
}

void deployServerVirusfilter(const XmlNode& server) {
    trySettings(server, panelCommand("mailserver"),
                {{"--set-virusfilter", "(virusfilter | mail-settings/virusfilter)[1]", word}});
}

}  // namespace zelvo
