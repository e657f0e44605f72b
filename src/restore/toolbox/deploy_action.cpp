#include "restore/toolbox/deploy_action.h"

namespace zelvo {

tDeployAction::tDeployAction(const XmlNode& node)
    : action_(node.test("@deployer-action") ? node.str("@deployer-action") : "create"),
      resourceOption_(node.str("@deployer-resource-option")) {}

bool tDeployAction::DeployActionSummarySkip(const std::string& word) {
    return word == "auxiliary" || word == "rejected-delete";
}

bool tDeployAction::DeployActionSummaryUpdate(const std::string& word) {
    return word == "create" || word == "update" || word == "change-owner";
}

}  // namespace zelvo
