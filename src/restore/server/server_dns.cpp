#include "restore/server/server_dns.h"

#include <optional>
#include <string>

#include "report/debug_log.h"
#include "restore/objects/dns_records.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/try_settings.h"

namespace zelvo {

namespace {

std::optional<std::string> enabledIf(const XmlNode& node, const char* item) {
    return node.test(item) ? "enabled" : "disabled";
}

std::optional<std::string> serialFormat(const XmlNode& node, const char* item) {
    if (!ifSet(node, item)) {
        return std::nullopt;
    }
    constexpr char kDate[] = "YYYYMMDDNN";
    return upperCase(node, item) == kDate ? kDate : "timestamp";
}

// Runs a command if the settings have what it is for.
void update(const XmlNode& settings, CliExec head, const OptionRow& row) {
    if (appendOptions(settings, head, {row})) {
        head.exec();
    }
}

}  // namespace

void deployServerDns(const XmlNode& settings) {
    theDebugLog->log(std::string("Server DNS settings deployment"));
    DnsRecordDeployer::deployRecords(settings, "dns-zone/dnsrec", DnsRecordDeployer::kTemplateZone);
    const CliExec server = panelCommand("server_dns", {"--update-server"});
    trySettings(settings, server,
                {{"-recursion", "@recursion"}, {"-status", "dns-zone/status/enabled", enabledIf}});
    update(settings, panelCommand("dns-zone-param", {"--update-soa"}),
           {"-soa-serial-format", "@serial-format", serialFormat});
    update(settings, server, {"-add-acl", "common-acl/list-item", joinedIfThere});
}

}  // namespace zelvo
