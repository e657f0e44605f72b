#include "restore/server/server_deployer.h"

#include <string>

#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/server/database_servers.h"
#include "restore/server/initial_configuration.h"
#include "restore/server/server_dns.h"
#include "restore/server/server_mail.h"
#include "restore/server/server_objects.h"
#include "restore/server/server_preferences.h"
#include "restore/server/server_spam.h"
#include "restore/server/server_sso.h"
#include "restore/server/server_templates.h"
#include "restore/server/server_vault.h"
#include "restore/server/server_visibility.h"
#include "restore/toolbox/run_settings.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

// When a step is taken.
enum class Runs { always, onFirstConfiguration };

// What a step calls.
struct Deploy {
    using Raising = void (*)(const XmlNode&);
    using Telling = bool (*)(const XmlNode&);

    constexpr Deploy(Raising forNode) : raising(forNode) {}
    constexpr Deploy(Telling forServer) : telling(forServer) {}

    // One of these two: the first raises its failure; the second tells its failures one by one and
    // returns whether there was none.
    Raising raising = nullptr;
    Telling telling = nullptr;
    // It is called with each node of the step's source, and not with the server.
    bool isForNodes = false;
};

constexpr Deploy onEach(Deploy::Raising forNode) {
    Deploy deploy(forNode);
    deploy.isForNodes = true;
    return deploy;
}

// A step of the server's settings: it is due when the server has what it reads.
struct Step {
    const char* source;
    Deploy deploy;
    // What the debug log says besides when it failed; empty for nothing.
    const char* failure = "";
    Runs runs = Runs::always;
};

// In the order in which the settings depend on each other.
const Step kSteps[] = {
    {"sso-settings", ssoRegistration},
    {"db-servers/db-server", deployDatabaseServers},
    {"mail-settings", onEach(deployServerMail)},
    {"dns-settings", onEach(deployServerDns), "Server DNS deployment was failed"},
    {"certificates/certificate", deployServerCertificates,
     "Server certificates deployment was failed", Runs::onFirstConfiguration},
    {"interface-preferences/custom-button", deployServerCustomButtons,
     "Server custom buttons deployment was failed"},
    {"interface-preferences/controls-visibility", onEach(deployServerControlsVisibility),
     "Server controls visibility was failed"},
    {"account-templates/domain-template", deployServerDomainTemplates,
     "Server domain templates deployment was failed"},
    {"account-templates/client-template", deployServerClientTemplates,
     "Server client templates deployment was failed"},
    {"account-templates/reseller-template", deployServerResellerTemplates,
     "Server reseller templates deployment was failed"},
    {"application-vault", deployServerApplicationVault,
     "Server application vault deployment was failed"},
    {"spamassassin | grey-listing", deploySpamSettings,
     "Spamassassin server settings deployment was failed"},
    {"server-preferences/* | backup-settings", deployServerPreferences},
    {"sso-settings/sso-branding/record", onEach(deploySSOBranding)},
    {"wz-config/wz-param", onEach(deployWzParam)},
    {".", deployAddressCertificates, "", Runs::onFirstConfiguration},
    {"content/cid[@type='skeleton']", deployServerSkeletons},
    {"virusfilter | mail-settings/virusfilter", deployServerVirusfilter},
};

bool isDue(const Step& step) { return step.runs == Runs::always || wasInitialConfiguration; }

bool wentThrough(const Deploy& deploy, const XmlNode& node) {
    return deploy.telling != nullptr ? deploy.telling(node)
                                     : guarded([&] { deploy.raising(node); });
}

// node: what the step's function takes.
void call(const Step& step, const XmlNode& node) {
    if (!wentThrough(step.deploy, node) && *step.failure != '\0') {
        theDebugLog->log(std::string(step.failure));
    }
}

void take(const Step& step, const XmlNode& server) {
    if (step.deploy.isForNodes) {
        forEachNode(server, step.source, [&step](const XmlNode& node) { call(step, node); });
    } else if (server.test(step.source)) {
        call(step, server);
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
