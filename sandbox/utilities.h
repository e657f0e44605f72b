// The programs that a panel has. All of them exist in the box, whether or not the panel in it knows
// what they do; one that is missing here cannot be started, as on a panel without it.
#pragma once

#include <string_view>

namespace sandbox {

// In the directory of the panel's utilities, where ".php" follows the name.
inline constexpr const char* kUtilities[] = {"admin",
                                             "anonftp",
                                             "autoresponder",
                                             "certificate",
                                             "client",
                                             "client_pref",
                                             "client_template",
                                             "custombutton",
                                             "database",
                                             "database-registrar",
                                             "database-server",
                                             "dns",
                                             "dns-zone",
                                             "dns-zone-param",
                                             "domadmin",
                                             "domain",
                                             "domain_pref",
                                             "domain_template",
                                             "domalias",
                                             "grey_listing",
                                             "init_conf",
                                             "interface_template",
                                             "ip_pool",
                                             "ipmanage",
                                             "mail",
                                             "maillist",
                                             "mailserver",
                                             "objectInfo",
                                             "pduser",
                                             "protdir",
                                             "reseller",
                                             "reseller_pref",
                                             "reseller_template",
                                             "sapp-items-pool",
                                             "sapp-packages-pool",
                                             "server_dns",
                                             "server_pref",
                                             "siteapp",
                                             "siteapp-item",
                                             "siteapp-registrar",
                                             "skeleton",
                                             "spamassassin",
                                             "sso",
                                             "subdomain",
                                             "tomcat",
                                             "traffic",
                                             "turboaddr",
                                             "webstat",
                                             "webuser"};

// Elsewhere below the product root.
inline constexpr const char* kTools[] = {
    "admin/sbin/websrvmng",
    "admin/sbin/crontabmng",
    "admin/sbin/sappmng",
    "admin/vlib/backup/backup-object-manager.php",
    "admin/vlib/backup/suspend_handler/SuspendHandlerRunner.php",
    "bin/xt-engine-zelvorun",
    "mailman/bin/arch",
    "RMK/correct_aw_statistics.pl"};

// Runs the panel's scripts: the first argument is the script, the others are for it.
inline constexpr std::string_view kInterpreter = "xt-engine-zelvorun";

// A utility is known by its name without directory and ".php".
constexpr std::string_view utilityName(std::string_view path) {
    path.remove_prefix(path.rfind('/') + 1);
    if (path.ends_with(".php")) {
        path.remove_suffix(4);
    }
    return path;
}

constexpr bool isOnPanel(std::string_view utility) {
    for (const char* name : kUtilities) {
        if (utility == name) {
            return true;
        }
    }
    for (const char* path : kTools) {
        if (utility == utilityName(path)) {
            return true;
        }
    }
    return false;
}

}  // namespace sandbox
