// Skeletons: what stands in the virtual hosts of an owner's new domains.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `content/cid` element of the type `skeleton`.
class SkeletonDeployer : public XmlDeployDocAbility {
  public:
    // owner: login of the account, or "admin".
    explicit SkeletonDeployer(std::string owner);

    using XmlDeployDocAbility::act;
    // Hands the archive to the panel. A failure is told as CantUnpackSkeleton with its cause;
    // raises only what ends the run.
    void act(XmlNode node) const override;

  private:
    void install(const XmlNode& node) const;

    std::string owner_;
};

}  // namespace zelvo
