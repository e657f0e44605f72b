#include "restore/server/server_templates.h"

#include <string>

#include "report/debug_log.h"
#include "restore/objects/account_template.h"
#include "restore/objects/domain_template_deployer.h"
#include "restore/objects/skeleton.h"

namespace zelvo {

namespace {

constexpr const char* kOwner = "admin";

void log(const std::string& title) { theDebugLog->log(title); }

}  // namespace

bool deployServerDomainTemplates(const XmlNode& server) {
    return deployEach(server, "account-templates/domain-template", DomainTemplateDeployer(kOwner));
}

bool deployServerClientTemplates(const XmlNode& server) {
    log("Server client templates deployment");
    return deployEach(server, "account-templates/client-template", ClientTemplateDeployer(kOwner));
}

bool deployServerResellerTemplates(const XmlNode& server) {
    log("Server reseller templates deployment");
    return deployEach(server, "account-templates/reseller-template", ResellerTemplateDeployer());
}

bool deployServerSkeletons(const XmlNode& server) {
    return deployEach(server, "content/cid[@type='skeleton']", SkeletonDeployer(kOwner));
}

}  // namespace zelvo
