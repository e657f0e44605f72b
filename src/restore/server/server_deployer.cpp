#include "restore/server/server_deployer.h"

#include "report/guard.h"
#include "restore/server/initial_configuration.h"
#include "restore/toolbox/run_settings.h"

namespace zelvo {

namespace {

// When a step is taken.
enum class Runs { always, onFirstConfiguration };

// A step of the server's settings that is not built: it is due when the server has what it reads.
struct Step {
    const char* source;
    Runs runs = Runs::always;
    // What the report calls it; empty for the name of the node that was found.
    const char* name = "";
};

// In the order in which the settings depend on each other.
const Step kSteps[] = {
    {"sso-settings"},
    {"db-servers/db-server"},
    {"mail-settings"},
    {"dns-settings"},
    {"certificates/certificate", Runs::onFirstConfiguration},
    {"interface-preferences/custom-button"},
    {"interface-preferences/controls-visibility"},
    {"account-templates/domain-template"},
    {"account-templates/client-template"},
    {"account-templates/reseller-template"},
    {"application-vault"},
    {"spamassassin"},
    {"grey-listing"},
    {"server-preferences/*"},
    {"backup-settings"},
    {"sso-settings/sso-branding/record"},
    {"wz-config/wz-param"},
    {"(properties/system-ip)[1]", Runs::onFirstConfiguration, "system-ip/@certificate"},
    {"content/cid[@type='skeleton']"},
    {"virusfilter"},
};

bool isDue(const Step& step) { return step.runs == Runs::always || wasInitialConfiguration; }

}  // namespace

void ServerDeployer::act(XmlNode node) const {
    guarded([&node] {
        wasInitialConfiguration = InitialConfiguration::initialZelvoConfiguration(node);
    });
    for (const Step& step : kSteps) {
        if (isDue(step)) {
            reportUnsupported(node, step.source, step.name);
        }
    }
}

}  // namespace zelvo
