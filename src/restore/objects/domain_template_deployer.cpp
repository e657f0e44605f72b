#include "restore/objects/domain_template_deployer.h"

#include <utility>

#include "restore/objects/domain_template.h"
#include "restore/objects/log_rotation.h"
#include "restore/objects/template_items.h"
#include "restore/toolbox/shells.h"

namespace zelvo {

namespace {

// Also of a template that says nothing of it: then it has no hosting.
std::optional<std::string> hasHosting(const XmlNode& node, const char* /*item*/) {
    return XmlDomainTemplate(node).hasPhysicalHosting() ? "true" : "false";
}

std::optional<std::string> localShell(const XmlNode& node, const char* item) {
    const std::optional<std::string> shell = ifThere(node, item);
    return shell ? std::optional(fixShell(*shell)) : std::nullopt;
}

void appendItems(const XmlNode& node, CmdLine& cmd, std::initializer_list<TemplateRow> table) {
    appendTemplateItems(node, cmd, OptionNames::kAsKey, table);
}

void appendLimits(const XmlNode& node, CmdLine& cmd) {
    appendItems(node, cmd,
                {{"webmail"},
                 {"disk_space"},
                 {"disk_space_soft"},
                 {"stat_ttl", "-keep_traf_stat"},
                 {"maillists", "-maillist"},
                 {"wu_script", "-wuscripts"},
                 {"nonexist_mail", "-no_usr", mailBounceValue},
                 {"max_traffic"},
                 {"max_traffic_soft"},
                 {"max_box"},
                 {"mbox_quota"},
                 {"max_redir"},
                 {"max_mg"},
                 {"max_resp"},
                 {"max_wu"},
                 {"max_db"},
                 {"max_maillists"},
                 {"max_webapps"},
                 {"max_subdom"},
                 {"max_dom_aliases"},
                 {"expiration", "-expiration", expirationValue},
                 {"overuse"}});
}

void appendLogRotation(const XmlNode& node, CmdLine& cmd) {
    if (node.test("logrotation")) {
        appendLogrotationOptions(node.getNode("logrotation"), cmd);
    }
}

void appendHosting(const XmlNode& node, CmdLine& cmd) {
    appendItems(node, cmd,
                {{"vh_type", "-hosting", hasHosting},
                 {"quota"},
                 {"max_connections"},
                 {"bandwidth"},
                 {"miva", "-miva", trueOrFalseIfThere},
                 {"ssl"},
                 {"same_ssl", "-same_ssl", trueOrFalseIfThere},
                 {"fp"},
                 {"fp_ssl"},
                 {"fp_auth", "-fpauth"},
                 {"wz_publish", "-publish-wz-site"},
                 {"asp", "-asp", trueOrFalseIfThere},
                 {"ssi", "-ssi", trueOrFalseIfThere},
                 {"php", "-php", trueOrFalseIfThere},
                 {"php_handler_type"},
                 {"cgi", "-cgi", trueOrFalseIfThere},
                 {"perl", "-perl", trueOrFalseIfThere},
                 {"python", "-python", trueOrFalseIfThere},
                 {"fastcgi", "-fastcgi", trueOrFalseIfThere},
                 {"coldfusion", "-coldfusion", trueOrFalseIfThere},
                 {"webstat"},
                 {"errdocs", "-err_docs"},
                 {"shell", "-shell", localShell},
                 {"pdir_zelvo_stat", "-webstat_protdir", trueOrFalseIfThere},
                 {"dns_type", "-dns_zone_type"}});
}

}  // namespace

DomainTemplateDeployer::DomainTemplateDeployer(std::string owner) : owner_(std::move(owner)) {}

void DomainTemplateDeployer::act(XmlNode node) const {
    deployTemplate("domain", owner_, node, [&node](CmdLine& cmd) {
        appendLimits(node, cmd);
        appendLogRotation(node, cmd);
        appendHosting(node, cmd);
        appendSharedAttribute(node, cmd);
    });
}

}  // namespace zelvo
