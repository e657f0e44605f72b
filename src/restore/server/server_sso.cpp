#include "restore/server/server_sso.h"

#include <list>
#include <optional>
#include <string>

#include "report/debug_log.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/panel_file.h"
#include "restore/toolbox/restore_errors.h"
#include "restore/toolbox/try_settings.h"

namespace zelvo {

namespace {

void log(const std::string& text) { theDebugLog->log(text); }

constexpr char kCertificate[] = "sso-settings/sso-certificate";
constexpr char kCertificateFile[] = "cert.tmp";

// What the registration consists of; the pages of other providers are none of it.
constexpr char kSettings[] = "sso-settings/*[not(self::sso-branding)]";

bool knowsValidInfo() {
    log("Trying to update application with existing SSO information...");
    return askWhether("sso", {"--check-valid-info"});
}

// Goes by the attribute alone, whatever it says. The command is a child of this process also where
// there is a gate: what it writes decides whom the panel lets in.
void keepPanelSettings(const XmlNode& server) {
    CliExec cmd = panelCommand("sso", {"--write-settings"});
    appendOptions(server, cmd, {{"-enabled", "boolean(sso-settings/@enabled)", trueOrFalse}});
    cmd.tLogExecCmd::exec();
}

// files: where the file is kept until the command has run.
void appendFile(const XmlNode& server, const char* item, const char* prefix, const char* option,
                std::list<PanelFile>& files, CmdLine& cmd) {
    if (server.test(item)) {
        cmd << option << files.emplace_back(prefix, server.str(item)).path();
    }
}

}  // namespace

void ssoRegistration(const XmlNode& server) {
    std::optional<PanelFile> certificate;
    if (server.test(kCertificate)) {
        certificate.emplace(kCertificateFile, server.str(kCertificate));
    }
    if (knowsValidInfo()) {
        keepPanelSettings(server);
    } else if (server.test(kSettings)) {
        log("Checking sso settings from backup");
        log("Deploying sso setting from backup file");
        deploySsoSettings(server);
    } else {
        throw EXC(NotValidSsoInfo);
    }
}

void deploySsoSettings(const XmlNode& server) {
    std::list<PanelFile> files;
    CliExec cmd = panelCommand("sso", {"--write-settings"});
    appendOptions(server, cmd,
                  {{"-server", "sso-settings/sso-server"},
                   {"-relay", "sso-settings/sso-relay"},
                   {"-application-id", "sso-settings/sso-application-id"},
                   {"-admin-uid", "sso-settings/sso-admin-uid"},
                   {"-admin-ownership", "sso-settings/@admin-ownership", trueOrFalse}});
    appendFile(server, kCertificate, kCertificateFile, "-certificate", files, cmd);
    appendOptions(server, cmd, {{"-enabled", "sso-settings/@enabled"}});
    appendFile(server, "sso-settings/sso-idp-cert", "sso.idp.pem", "-idp-certificate", files, cmd);
    appendOptions(server, cmd,
                  {{"-idp-api-version", "sso-settings/sso-idp-api-version"},
                   {"-idp-id", "sso-settings/sso-idp-id"}});
    cmd.exec();
}

void deploySSOBranding(const XmlNode& record) {
    trySettings(record, panelCommand("sso", {"--set-branded-idp"}),
                {{"-url", "idp-url", always}, {"-domain", "http-request-domain", always}});
}

}  // namespace zelvo
