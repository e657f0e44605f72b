// What the web statistics of a domain hide and group.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `webalizer` element.
class WebalizerDeployer : public XmlDeployDocAbility {
  public:
    explicit WebalizerDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Replaces the panel's list by that of the element, unless the element says nothing at all. The
    // failure of a referrer is told. Raises UnsafeName and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

// Hides the referrer of one `webalizer-hidden-referrer` element.
class WebalizerHiddenReferrerDeployer : public XmlDeployDocAbility {
  public:
    explicit WebalizerHiddenReferrerDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Raises UnsafeName and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

// Puts the referrer of one `webalizer-group-referrer` element into its group.
class WebalizerGroupReferrerDeployer : public XmlDeployDocAbility {
  public:
    explicit WebalizerGroupReferrerDeployer(std::string domainName);

    using XmlDeployDocAbility::act;
    // Raises UnsafeName and ExecCmd::Failed.
    void act(XmlNode node) const override;

  private:
    std::string domainName_;
};

}  // namespace zelvo
