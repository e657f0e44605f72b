#include "restore/server/server_deployer.h"

#include <string>

#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/server/initial_configuration.h"
#include "restore/server/server_templates.h"
#include "restore/toolbox/run_settings.h"

namespace zelvo {

namespace {

// When a step is taken.
enum class Runs { always, onFirstConfiguration };

// A step of the server's settings: it is due when the server has what it reads.
struct Step {
    const char* source;
    // Null for a step that is not built: each node of its source is reported then.
    void (*deploy)(const XmlNode& server) = nullptr;
    // What the debug log says besides when it failed; empty for nothing.
    const char* failure = "";
    Runs runs = Runs::always;
};

// In the order in which the settings depend on each other.
const Step kSteps[] = {
    {"sso-settings"},
    {"db-servers/db-server"},
    {"mail-settings"},
    {"dns-settings", nullptr, "Server DNS deployment was failed"},
    {"certificates/certificate", nullptr, "Server certificates deployment was failed",
     Runs::onFirstConfiguration},
    {"interface-preferences/custom-button", nullptr, "Server custom buttons deployment was failed"},
    {"interface-preferences/controls-visibility", nullptr, "Server controls visibility was failed"},
    {"account-templates/domain-template", deployServerDomainTemplates},
    {"account-templates/client-template", deployServerClientTemplates},
    {"account-templates/reseller-template", deployServerResellerTemplates},
    {"application-vault", nullptr, "Server application vault deployment was failed"},
    {"spamassassin | grey-listing", nullptr, "Spamassassin server settings deployment was failed"},
    {"server-preferences/* | backup-settings"},
    {"sso-settings/sso-branding/record"},
    {"wz-config/wz-param"},
    {"(properties/system-ip)[1]", nullptr, "", Runs::onFirstConfiguration},
    {"content/cid[@type='skeleton']", deployServerSkeletons},
    {"virusfilter"},
};

bool isDue(const Step& step) { return step.runs == Runs::always || wasInitialConfiguration; }

void take(const Step& step, const XmlNode& server) {
    if (step.deploy == nullptr) {
        reportUnsupported(server, step.source);
    } else if (server.test(step.source) && !guarded([&] { step.deploy(server); }) &&
               *step.failure != '\0') {
        theDebugLog->log(std::string(step.failure));
    }
}

}  // namespace

void ServerDeployer::act(XmlNode node) const {
    guarded([&node] {
        wasInitialConfiguration = InitialConfiguration::initialZelvoConfiguration(node);
    });
    for (const Step& step : kSteps) {
        if (isDue(step)) {
            take(step, node);
        }
    }
}

}  // namespace zelvo
