// The domain administrator, a part of the domain's deployer.
#include <boost/algorithm/string/trim.hpp>
#include <optional>
#include <string>
#include <vector>

#include "restore/domain/domain_deployer.h"
#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/option_name.h"
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

// The items whose names can be options. They are chosen before there is a command, so that one that
// is refused costs none of the others, and is not told again when the command goes out in parts.
std::vector<XmlNode> chosen(const XmlNode& user, const char* items, const char* what) {
    std::vector<XmlNode> found;
    guardedEach(user, items, [&](const XmlNode& item) {
        requireAccountOption(item.str("@name"), what);
        found.push_back(item);
    });
    return found;
}

void appendRights(const XmlNode& user, const std::vector<XmlNode>& permissions, CmdLine& cmd) {
    tDeployDocAbility::getLockScreen(user, cmd);
    tDeployDocAbility::getMaxButtonLength(user, cmd);
    forEachNode(user, "permission[@name = 'multiple-sessions'][1]",
                [&cmd](const XmlNode& permission) { addPermission(cmd, permission); });
    appendOptions(user, cmd, {{"-status", "@status", falseOrTrue}});
    for (const XmlNode& permission : permissions) {
        addPermission(cmd, permission);
    }
}

}  // namespace

void tDomainDeployer::setDomainUser(const XmlNode& user) const {
    const auto permissions = chosen(
        user, "permission[@name != 'multiple-sessions' and @name != 'cp_access']", "a permission");
    const auto contact = chosen(user, "pinfo[@name!='email']", "contact data");
    CommandInParts settings(optionalUpdate("domadmin", domain_.name));
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) { appendLogin(user, cmd); });
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { appendRights(user, permissions, cmd); });
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) {
        appendOptions(user, cmd, {{"-email", "pinfo[@name='email']", decoded}});
    });
    settings.add(PartCost::kTheRest, [&](CmdLine& cmd) {
        appendOptions(user, cmd, {{"-pname", "@contact", trimmed}});
    });
    for (const XmlNode& item : contact) {
        settings.add(PartCost::kItself, [&item](CmdLine& cmd) { setSafePinfo(cmd, item); });
    }
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { setCountry(cmd, user); });
    settings.add(PartCost::kItself, [&](CmdLine& cmd) { setLocale(cmd, user); });
    settings.exec();
    tryInstallSkin(user, "domadmin", domain_.name);
}

}  // namespace zelvo
