#include "restore/server/server_objects.h"

#include <string>

#include "report/debug_log.h"
#include "report/error_functions.h"
#include "restore/objects/certificate.h"
#include "restore/objects/custom_button.h"
#include "restore/server/initial_configuration.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

void log(const std::string& text) { theDebugLog->log(text); }

}  // namespace

bool deployServerCertificates(const XmlNode& server) {
    log("Server certificates deployment");
    return deployEach(server, "certificates/certificate", CertificateDeployer(""));
}

bool deployServerCustomButtons(const XmlNode& server) {
    log("Server custom buttons deployment");
    return deployEach(server, "interface-preferences/custom-button", CustomButtonDeployer("admin"));
}

void deployAddressCertificates(const XmlNode& server) {
    log("Setting of certificates for IP addresses");
    execOrLog(panelCommand("ipmanage", {"--reset_ssl_certificate"}));
    server.foreach ("properties/system-ip", InitialConfiguration::SetCertificateOnIP,
                    deploy_error_func);
}

}  // namespace zelvo
