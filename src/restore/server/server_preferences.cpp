#include "restore/server/server_preferences.h"

#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/try_settings.h"

namespace zelvo {

namespace {

CliExec serverPref() { return panelCommand("server_pref", {"--update"}); }

void setDiskUsage(const XmlNode& usage) {
    tryEachSetting(usage, serverPref(),
                   {{"-include-logs", "boolean(include-logs)", trueOrFalse},
                    {"-include-databases", "boolean(include-databases)", trueOrFalse},
                    {"-include-mailboxes", "boolean(include-mailboxes)", trueOrFalse},
                    {"-include-webapps", "boolean(include-webapps)", trueOrFalse},
                    {"-include-maillists", "boolean(include-maillists)", trueOrFalse},
                    {"-include-domaindumps", "boolean(include-domaindumps)", trueOrFalse}});
}

}  // namespace

void deployServerPreferences(const XmlNode& server) {
    tryEachSetting(
        server, serverPref(),
        {{"-force-db-prefix", "server-preferences/force-db-prefix", trueOrFalseIfThere},
         {"-allow-siteapp-local-db", "server-preferences/allow-siteapp-local-db",
          trueOrFalseIfThere},
         {"-forbid-create-dns-subzone", "server-preferences/forbid-create-dns-subzone",
          trueOrFalseIfThere},
         {"-force-db-user-prefix", "server-preferences/force-db-user-prefix", trueOrFalseIfThere},
         {"-db-user-length", "server-preferences/db-user-length"}});
    trySettings(server, serverPref(),
                {{"-max-backup-processes", "backup-settings/@max-processes"},
                 {"-low-priority", "backup-settings/@low-priority"},
                 {"-do-not-compress", "backup-settings/@do-not-compress"}});
    tryEachSetting(server, serverPref(),
                   {{"-hide-top-advertisement", "server-preferences/hide-top-advertisement/@hide"},
                    {"-traffic-direction", "server-preferences/traffic-direction/@traffic"},
                    {"-restart-apache", "server-preferences/restart-apache"},
                    {"-stat-keep", "server-preferences/stat-keep"},
                    {"-count-type", "server-preferences/disk-space-count-type/@count-type"}});
    if (server.test("server-preferences/disk-usage")) {
        setDiskUsage(server.getNode("server-preferences/disk-usage"));
    }
    tryEachSetting(
        server, panelCommand("admin", {"--update"}),
        {{"-multiple-sessions", "server-preferences/multiple-session", trueOrFalseIfThere},
         {"-lock-screen", "server-preferences/lock-screen", trueOrFalseIfThere}});
    tryEachSetting(server, serverPref(),
                   {{"-ucp-catalog-url", "server-preferences/ucp-catalog-url"}});
}

void deployWzParam(const XmlNode& parameter) {
    runPanelCommand("server_pref", {"--update", "-wz-param-name", parameter.str("wz-param-name"),
                                    "-wz-param-value", parameter.str("wz-param-value")});
}

}  // namespace zelvo
