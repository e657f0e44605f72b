// The values of a zone's SOA record (RFC 1035, 3.3.13).
#pragma once

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Turns `dns-zone-param` elements into options of the command that sets the record.
class DnsSOAPrefsDeployer : public tXmlOperator, public tDeployDocAbility {
  public:
    // cmd: takes the options; must outlive the operator.
    explicit DnsSOAPrefsDeployer(CmdLine& cmd) : cmd_(cmd) {}

    // Appends the option of one parameter, with its seconds as a whole number of its unit and the
    // unit's letter; empty for an unknown unit. Nothing for an unknown parameter. Raises
    // NumberConversionError, for any of them, when the seconds are no number.
    void act(_xmlNode* node) const override;

  private:
    CmdLine& cmd_;
};

}  // namespace zelvo
