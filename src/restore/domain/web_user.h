// Users with a directory of their own on a domain's site.
#pragma once

#include <string>

#include "content/vhost_refferred.h"
#include "restore/toolbox/deploy_doc_ability.h"
#include "restore/toolbox/domain_info.h"

namespace zelvo {

// Restores one `webuser` element.
class tWebuserDeployer : public XmlDeployDocAbility {
  public:
    // content: gathers what is to be unpacked; must outlive the deployer.
    tWebuserDeployer(DomainInfo domain, DomainVHostRefferred& content);

    using XmlDeployDocAbility::act;
    // Restores the user up to its content, which is only gathered. Raises FailedWebuserDeployment,
    // tError_XPath_CantEvaluate without a `sysuser` and, for a quota that is no number,
    // NumberConversionError; the failure of a cron table is told.
    void act(XmlNode node) const override;

  private:
    void deployUser(const XmlNode& node, const std::string& login) const;
    void createOrUpdate(const XmlNode& node, const std::string& login) const;
    void allowScripts(const XmlNode& node, const std::string& login) const;
    void deployContent(const XmlNode& node, const std::string& login) const;

    DomainInfo domain_;
    DomainVHostRefferred* content_;
};

}  // namespace zelvo
