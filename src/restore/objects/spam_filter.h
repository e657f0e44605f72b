// The spam filter of a mail name, and what it shares with that of the server.
#pragma once

#include <optional>
#include <string>

#include "content/mail_refferred.h"
#include "exec/cli_exec.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `spamassassin` element.
class SpamassassinDeployer : public XmlDeployDocAbility {
  public:
    // domainName: in UTF-8. mailName: without the domain. content: gathers the data that the filter
    // has learned; must outlive the deployer.
    SpamassassinDeployer(std::string domainName, std::string mailName,
                         DomainMailRefferred& content);

    using XmlDeployDocAbility::act;
    // Sets the filter and its lists; on a server without the filter, the lists alone become those
    // of grey listing. Raises UnsafeName, MigrationTerminatedException and what CliExec::exec
    // raises.
    void act(XmlNode node) const override;

  private:
    // These return the command that takes the lists.
    CliExec setFilter(const XmlNode& node) const;
    CliExec greyListing() const;

    std::string domainName_;
    std::string mailName_;
    DomainMailRefferred* content_;
};

// Whether spam is rejected, as a rule for options: "true" if the item is "delete", otherwise
// "false", and nothing if the element has no such item.
std::optional<std::string> trueIfDelete(const XmlNode& node, const char* item);

}  // namespace zelvo
