// The DNS zones of domains and of their aliases.
#pragma once

#include <optional>
#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `dns-zone` element.
class DnsDeployer : public XmlDeployDocAbility {
  public:
    // domainName: the zone, in UTF-8 or ASCII. templateWebmail: whether the template in force gives
    // its domains webmail; nothing where no template is in force.
    explicit DnsDeployer(std::string domainName,
                         std::optional<bool> templateWebmail = std::nullopt);

    using XmlDeployDocAbility::act;
    // Restores the zone: whether it is served and how, its records, its webmail under a template,
    // its SOA record. A refused list of records goes to the debug log alone, and no other refused
    // call is told; a record that cannot be restored is told, and then no record is. Raises
    // UnsafeName for a zone that the utility would take for an option, and NumberConversionError,
    // which ends the run, for an SOA value that is no number.
    void act(XmlNode node) const override;

  private:
    void deployRecords(const XmlNode& zone) const;
    void deployWebmail(const XmlNode& zone) const;
    void deploySoa(const XmlNode& zone) const;

    std::string domainName_;
    std::optional<bool> templateWebmail_;
};

}  // namespace zelvo
