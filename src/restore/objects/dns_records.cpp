#include "restore/objects/dns_records.h"

#include <string_view>
#include <utility>

#include "lib/idn.h"
#include "report/debug_log.h"
#include "report/error_functions.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

namespace {

// How the text of an item becomes a field.
using FieldRule = std::string (*)(const std::string& text, const std::string& domain);

std::string asItIs(const std::string& text, const std::string&) { return text; }

std::string address(const std::string& text, const std::string&) {
    return DnsRecordDeployer::fixIpAddr(text);
}

constexpr FieldRule subDomain = DnsRecordDeployer::getSubDomain;

struct Field {
    const char* item = nullptr;
    FieldRule rule = asItIs;
};

// The fields of an entry, behind its type.
struct EntryForm {
    std::string_view type;
    Field fields[3];
};

constexpr EntryForm kForms[] = {{"A", {{"@src", subDomain}, {"@dst", address}}},
                                {"NS", {{"@src", subDomain}, {"@dst"}}},
                                {"CNAME", {{"@src", subDomain}, {"@dst"}}},
                                {"TXT", {{"@src", subDomain}, {"@dst"}}},
                                {"MX", {{"@src", subDomain}, {"@dst"}, {"@opt"}}},
                                {"PTR", {{"@src"}, {"@dst", subDomain}, {"@opt"}}},
                                {"SRV", {{"@src"}, {"@dst"}, {"@opt"}}},
                                {"master", {{"@src", address}}}};

std::string entry(const XmlNode& record, const std::string& type, const std::string& domain) {
    std::string text;
    for (const EntryForm& form : kForms) {
        if (form.type == type) {
            text = type;
            for (const Field& field : form.fields) {
                if (field.item != nullptr) {
                    text += "," + field.rule(record.str(field.item), domain);
                }
            }
        }
    }
    return text + ";";
}

CliExec saveCommand(const std::string& domain, const std::string& records) {
    if (domain == DnsRecordDeployer::kTemplateZone) {
        return panelCommand("server_dns", {"--set", records});
    }
    CliExec cmd = commandOn("dns", "--set", domain);
    cmd << "-list" << records;
    return cmd;
}

}  // namespace

DnsRecordDeployer::DnsRecordDeployer(std::string domainName, std::string& records)
    : domainName_(std::move(domainName)), records_(records) {}

void DnsRecordDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    const std::string type = node.str("@type");
    const std::string src = node.str("@src");
    const ObjectLogger logger(src + "(" + type + ")" + src, "dns record");
    records_ += entry(node, type, domainName_);
}

void DnsRecordDeployer::saveRecordsList() const {
    if (records_.empty()) {
        return;
    }
    CliExec cmd = saveCommand(domainName_, records_);
    if (cmd.exec(std::nothrow) != 0) {
        // The failure itself names neither for a list that is too long for an argument.
        theDebugLog->log(boost::format("The records of the zone %1%, a list of %2% bytes, were "
                                       "not saved") %
                         domainName_ % records_.size());
        cmd.reportError();
    }
}

void DnsRecordDeployer::deployRecords(const XmlNode& node, const std::string& expr,
                                      const std::string& domainName) {
    std::string list;
    const DnsRecordDeployer records(domainName, list);
    node.foreach (
        expr, [&records](const XmlNode& record) { records.act(record); }, deploy_error_func_throw);
    records.saveRecordsList();
}

std::string DnsRecordDeployer::getSubDomain(const std::string& name, const std::string& domain) {
    const std::string whole = idn::toUtf8(name);
    const std::string zone = idn::toUtf8(domain);
    const std::size_t start = whole.rfind(zone);
    if (start != std::string::npos) {
        const std::string_view rest = std::string_view(whole).substr(start + zone.size());
        const bool isAtEnd = rest.empty() || rest == ".";
        if (isAtEnd && start == 0) {
            return "";
        }
        if (isAtEnd && whole[start - 1] == '.') {
            return whole.substr(0, start - 1);
        }
    }
    throw EXC(NotAProperSubdomain) % name % domain;
}

}  // namespace zelvo
