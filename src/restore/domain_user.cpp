// The domain administrator, a part of the domain's deployer.
#include <boost/algorithm/string/trim.hpp>

#include "restore/domain_deployer.h"
#include "restore/guard.h"
#include "restore/option_table.h"
#include "restore/walk.h"

namespace zelvo {

void tDomainDeployer::setDomainUser(const XmlNode& user) const {
    if (_setDomainUser(user, 0) != 0) {
        _setDomainUser(user, 1);
    }
    tryInstallSkin(user, "domadmin", domainName_);
}

int tDomainDeployer::_setDomainUser(const XmlNode& user, int byParts) const {
    const CliExec base = updateCommand("domadmin", domainName_);
    CliExec cmd = base;
    const auto endOfPart = [&] {
        if (byParts) {
            // Reset first: a part that fails must not travel along with the next one.
            CliExec part = cmd;
            cmd = base;
            part.exec();
        }
    };

    getPasswordOpts(user, cmd);
    appendOptions(user, cmd, {{"-uid", "@uid"}, {"-ownership", "@ownership"}});
    endOfPart();

    guarded([&] {
        const auto permission = [&cmd](const XmlNode& node) { addPermission(cmd, node); };
        getLockScreen(user, cmd);
        getMaxButtonLength(user, cmd);
        if (user.test("permission[@name = 'multiple-sessions']")) {
            permission(user.getNode("permission[@name = 'multiple-sessions']"));
        }
        cmd << "-status" << (user.test("@status = 'false'") ? "false" : "true");
        forEachNode(user, "permission[@name != 'multiple-sessions' and @name != 'cp_access']",
                    permission);
        endOfPart();
    });

    setEmail(cmd, user, "");
    endOfPart();

    if (user.test("@contact")) {
        cmd << "-pname" << boost::trim_copy(user.str("@contact"));
    }
    endOfPart();

    const auto group = [&](const OptionGroup& options) {
        if (byParts) {
            tryUpdateDomadminStuff(options);
        } else {
            options(cmd);
        }
    };
    forEachNode(user, "pinfo[@name!='email']", [&](const XmlNode& item) {
        group([&](CmdLine& part) { return setSafePinfo(part, item); });
    });
    group([&](CmdLine& part) { return setCountry(part, user); });
    group([&](CmdLine& part) { return setLocale(part, user); });
    if (byParts) {
        return 0;
    }

    try {
        cmd.exec();
    } catch (const ExTraceable& failure) {
        deploy_error_func(failure);
        return 1;
    }
    return 0;
}

void tDomainDeployer::tryUpdateDomadminStuff(const OptionGroup& options) const {
    tryUpdateGroup("domadmin", domainName_, options);
}

}  // namespace zelvo
