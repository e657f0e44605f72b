// The settings in here are a part of the domain's deployer.
#include "restore/domain/mail_system.h"

#include <optional>
#include <utility>

#include "content/mail_refferred.h"
#include "content/unpacked_file.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "restore/domain/domain_deployer.h"
#include "restore/domain/mail_user.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

void deployMailName(const XmlNode& node, const std::string& domainName) {
    DomainMailRefferred content(node, true, domainName);
    deployEach(node, ".", tMailuserDeployer(domainName, content));
    // The failure of a whole archive does not say whose it is.
    const ObjectLogger logger(domainName, "domain");
    content.Extract(*tDeployDocAbility::extractor);
}

tCatchAllDeployer::tCatchAllDeployer(std::string domainName) : domainName_(std::move(domainName)) {}

void tCatchAllDeployer::act(XmlNode node) const {
    CliExec cmd = commandOn("domain_pref", "-u", domainName_);
    cmd << "-no_usr" << node.str(".");
    cmd.exec();
}

void tDomainDeployer::deployMailSystem(const XmlNode& mailsystem) const {
    DomainMailRefferred content(mailsystem, true, domain_.name);
    deployEach(mailsystem, "mailusers/mailuser", tMailuserDeployer(domain_.name, content));
    content.Extract(*extractor);
    if (!writesSettings()) {
        return;
    }
    if (!templateInForce()) {
        deployEach(mailsystem, "preferences/catch-all", tCatchAllDeployer(domain_.name));
    }
    if (mailsystem.test("properties/status")) {
        setMailStatus(mailsystem);
    }
    if (mailsystem.test("preferences/domain-keys")) {
        setDomainKeys(mailsystem.getNode("preferences/domain-keys"));
    }
    setMailOption(mailsystem, "domain_pref", "--update", {"-webmail", "preferences/web-mail"});
    setMailOption(mailsystem, "grey_listing", "--update-domain",
                  {"-status", "preferences/grey-listing"});
}

void tDomainDeployer::setMailStatus(const XmlNode& mailsystem) const {
    CliExec cmd = commandOn("mail", "--update-service", domain_.name);
    addStatus(cmd, mailsystem.getNode("properties/status"));
    cmd.exec();
}

void tDomainDeployer::setDomainKeys(const XmlNode& keys) const {
    CliExec cmd = updateCommand("domain_pref", domain_.name);
    appendOptions(keys, cmd, {{"-sign_outgoing_mail", "@state", always}});
    std::optional<UnpackedFile> key;
    if (hasCid(keys, "key")) {
        key = extractor->extractPrivateKey(getCid(keys, "key"));
        cmd << "-sfdk_private_key" << key->path();
    }
    appendOptions(keys, cmd, {{"-sfdk_public_key", "@public-key"}});
    cmd.exec();
}

void tDomainDeployer::setMailOption(const XmlNode& mailsystem, const std::string& utility,
                                    const std::string& verb, const OptionRow& row) const {
    guarded([&] {
        CliExec cmd = commandOn(utility, verb, domain_.name);
        cmd.expectOptions();
        appendOptions(mailsystem, cmd, {row});
        cmd.exec();
    });
}

}  // namespace zelvo
