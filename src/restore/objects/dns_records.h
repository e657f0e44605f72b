// The records of a DNS zone. The panel takes them as one list: each entry ends with ";", its fields
// are separated by ",".
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Gathers the `dnsrec` elements of one zone, and sends them.
class DnsRecordDeployer : public XmlDeployDocAbility {
  public:
    // What stands for the domain's name in the server's template of a zone.
    static constexpr const char* kTemplateZone = "<domain>";

    // domainName: the zone, in UTF-8 or ASCII, or kTemplateZone. records: where the entries are
    // appended; must outlive the deployer.
    DnsRecordDeployer(std::string domainName, std::string& records);

    using XmlDeployDocAbility::act;
    // Appends the entry of one record. One of a type that the panel does not know is an entry
    // without fields. Raises NotAProperSubdomain, and MigrationTerminatedException when the run is
    // to stop; the list is as it was then.
    void act(XmlNode node) const override;

    // Sends the list in the place of the zone's records; an empty one is not sent. Raises
    // ExecCmd::Failed, and UnsafeName for a zone that the utility would take for an option.
    void saveRecordsList() const;

    // Has the records that the expression finds below the element take the place of the zone's.
    // The first one that is none is told and, being told, thrown on: then nothing is sent. Raises
    // what act and saveRecordsList raise besides.
    static void deployRecords(const XmlNode& node, const std::string& expr,
                              const std::string& domainName);

    // Returns what stands in name before ".DOMAIN" (a dot may follow), in UTF-8; nothing for the
    // domain itself. Either may be in UTF-8 or in ASCII (RFC 3490); case counts. Raises
    // NotAProperSubdomain for a name that is not in the domain.
    static std::string getSubDomain(const std::string& name, const std::string& domain);

    // Returns the address as the panel wants it in an "A" or a "master" entry: as it is.
    static std::string fixIpAddr(std::string address) { return address; }

  private:
    std::string domainName_;
    std::string& records_;
};

}  // namespace zelvo
