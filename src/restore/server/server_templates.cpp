#include "restore/server/server_templates.h"

#include <string>

#include "report/debug_log.h"
#include "restore/objects/account_template.h"
#include "restore/objects/domain_template_deployer.h"
#include "restore/objects/skeleton.h"

namespace zelvo {

namespace {

constexpr const char* kOwner = "admin";

// kind: as in the name of the element, "KIND-template".
void deployTemplates(const XmlNode& server, const std::string& kind,
                     const XmlDeployDocAbility& deployer) {
    if (!deployEach(server, "account-templates/" + kind + "-template", deployer)) {
        theDebugLog->log("Server " + kind + " templates deployment was failed");
    }
}

}  // namespace

void deployServerDomainTemplates(const XmlNode& server) {
    deployTemplates(server, "domain", DomainTemplateDeployer(kOwner));
}

void deployServerClientTemplates(const XmlNode& server) {
    theDebugLog->log(std::string("Server client templates deployment"));
    deployTemplates(server, "client", ClientTemplateDeployer(kOwner));
}

void deployServerResellerTemplates(const XmlNode& server) {
    theDebugLog->log(std::string("Server reseller templates deployment"));
    deployTemplates(server, "reseller", ResellerTemplateDeployer());
}

void deployServerSkeletons(const XmlNode& server) {
    deployEach(server, "content/cid[@type='skeleton']", SkeletonDeployer(kOwner));
}

}  // namespace zelvo
