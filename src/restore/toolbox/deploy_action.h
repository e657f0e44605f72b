// The action word of an element: what is to be done with the object that it describes.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The words of one element. Every predicate compares one word exactly.
class tDeployAction {
  public:
    // Reads @deployer-action ("create" where it is absent) and @deployer-resource-option.
    explicit tDeployAction(const XmlNode& node);

    const std::string& action() const { return action_; }

    bool DeployActionCreate() const { return action_ == "create"; }
    bool DeployActionUpdate() const { return action_ == "update"; }
    bool DeployActionDelete() const { return action_ == "delete"; }
    // The element only carries what lies below it.
    bool DeployActionAuxiliary() const { return action_ == "auxiliary"; }
    bool DeployActionSkip() const { return DeployActionAuxiliary(); }
    // A deletion that the migration refused.
    bool DeployActionRejectDelete() const { return action_ == "rejected-delete"; }
    // The object exists under another owner.
    bool DeployActionChangeOwner() const { return action_ == "change-owner"; }
    // A reseller becomes a client.
    bool DeployActionConvertToClient() const { return action_ == "convert-to-client"; }
    // A client becomes a reseller.
    bool DeployActionConvertToReseller() const { return action_ == "convert-to-reseller"; }
    // Limits may be exceeded.
    bool DeployActionCanOveruse() const { return resourceOption_ == "overuse"; }

    // True for the words that leave the object alone, so that it does not count as handled.
    static bool DeployActionSummarySkip(const std::string& word);
    // True for the words under which an object is made or changed itself.
    static bool DeployActionSummaryUpdate(const std::string& word);

  private:
    std::string action_;
    std::string resourceOption_;
};

}  // namespace zelvo
