// The domain administrator, a part of the domain's deployer.
#include <boost/algorithm/string/trim.hpp>
#include <optional>
#include <string>

#include "restore/domain/domain_deployer.h"
#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

std::optional<std::string> trimmed(const XmlNode& node, const char* item) {
    std::optional<std::string> text = ifThere(node, item);
    if (text) {
        boost::trim(*text);
    }
    return text;
}

void appendLogin(const XmlNode& user, CmdLine& cmd) {
    tDeployDocAbility::getPasswordOpts(user, cmd);
    appendOptions(user, cmd, {{"-uid", "@uid"}, {"-ownership", "@ownership"}});
}

void appendRights(const XmlNode& user, CmdLine& cmd) {
    const auto permissions = [&](const char* which) {
        forEachNode(user, which, [&cmd](const XmlNode& node) { addPermission(cmd, node); });
    };
    tDeployDocAbility::getLockScreen(user, cmd);
    tDeployDocAbility::getMaxButtonLength(user, cmd);
    permissions("permission[@name = 'multiple-sessions'][1]");
    appendOptions(user, cmd, {{"-status", "@status", falseOrTrue}});
    permissions("permission[@name != 'multiple-sessions' and @name != 'cp_access']");
}

}  // namespace

void tDomainDeployer::setDomainUser(const XmlNode& user) const {
    CommandInParts settings(optionalUpdate("domadmin", domain_.name));
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) { appendLogin(user, cmd); });
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { appendRights(user, cmd); });
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) {
        appendOptions(user, cmd, {{"-email", "pinfo[@name='email']", decoded}});
    });
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) {
        appendOptions(user, cmd, {{"-pname", "@contact", trimmed}});
    });
    forEachNode(user, "pinfo[@name!='email']", [&](const XmlNode& item) {
        settings.add(PartCost::kItself, [item](CmdLine& cmd) { setSafePinfo(cmd, item); });
    });
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { setCountry(cmd, user); });
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { setLocale(cmd, user); });
    settings.exec();
    tryInstallSkin(user, "domadmin", domain_.name);
}

}  // namespace zelvo
