#include "restore/objects/dns_zone.h"

#include <utility>

#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/objects/dns_records.h"
#include "restore/objects/dns_soa.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

// The panel has two forms of serial numbers; an empty one of the dump stands for none.
std::optional<std::string> serialFormat(const XmlNode& node, const char* item) {
    const std::optional<std::string> format = ifSet(node, item);
    if (!format) {
        return std::nullopt;
    }
    return *format == "YYYYMMDDNN" ? "yyyymmddnn" : "timestamp";
}

}  // namespace

DnsDeployer::DnsDeployer(std::string domainName, std::optional<bool> templateWebmail)
    : domainName_(std::move(domainName)), templateWebmail_(templateWebmail) {}

void DnsDeployer::act(XmlNode node) const {
    if (node.test("status/disabled-by/@name = 'domadm' or status/disabled-by/@name = 'admin'")) {
        commandOn("dns", "--off", domainName_).exec(std::nothrow);
    }
    if (node.test("@type='slave'")) {
        commandOn("dns", "--set-slave", domainName_).exec(std::nothrow);
    }
    deployRecords(node);
    deployWebmail(node);
    deploySoa(node);
}

void DnsDeployer::deployRecords(const XmlNode& zone) const {
    if (!debugLogged([&] { DnsRecordDeployer::deployRecords(zone, "dnsrec", domainName_); })) {
        theDebugLog->log(std::string("DNS zone deployment was failed"));
    }
}

void DnsDeployer::deployWebmail(const XmlNode& zone) const {
    if (templateWebmail_ && !zone.test("../phosting/subdomain/@name = 'webmail'")) {
        CliExec cmd = updateCommand("domain_pref", domainName_);
        cmd << "-webmail" << (*templateWebmail_ ? "true" : "false");
        cmd.exec(std::nothrow);
    }
}

void DnsDeployer::deploySoa(const XmlNode& zone) const {
    if (!zone.test("@serial-format != '' or dns-zone-param")) {
        return;
    }
    CliExec cmd = commandOn("dns", "--update-soa", domainName_);
    foreach_xmlnode(tXPathExpr(zone.doc(), "dns-zone-param", zone.node()), DnsSOAPrefsDeployer(cmd),
                    deploy_error_func);
    appendOptions(zone, cmd, {{"-soa-serial-format", "@serial-format", serialFormat}});
    cmd.exec(std::nothrow);
}

}  // namespace zelvo
