#include "restore/server/initial_configuration.h"

#include <map>

#include "report/debug_log.h"
#include "report/guard.h"
#include "restore/toolbox/addresses.h"
#include "restore/toolbox/option_name.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

void log(const std::string& text) { theDebugLog->log(text); }

// A panel that does not answer may be a working one, which must not be initialised again.
bool isPanelConfigured() {
    log("Checking whether Zelvo is already configured");
    const bool isConfigured = askWhether("init_conf", {"--check-configured"});
    log(isConfigured ? "Zelvo is already configured. Performing Zelvo reconfiguration."
                     : "Zelvo is not configured. Performing initial Zelvo configuration.");
    return isConfigured;
}

// One setting of the administrator that may fail without a word but in the debug log.
void trySetting(const char* utility, const char* option, const char* xpath) {
    const XmlNode& root = tDeployDocAbility::root;
    if (root.test(xpath)) {
        execOrLog(panelCommand(utility, {"--update", option, root.str(xpath)}));
    }
}

// The administrator's name and address are contact data. What a working panel keeps, and what has a
// place of its own in the dump, is not.
void requireContactData(const std::string& name) {
    requireOptionName(
        name, "contact data",
        {"hostname", "passwd", "default-ip", "netmask", "iface", "ip-type", "login", "owner", "uid",
         "guid", "ownership", "status", "creation-date", "notify", "force"});
}

void createAddress(const SystemIp& ip) {
    log("Creating new IP address");
    CliExec cmd = commandOn("ipmanage", "-c", ip.address);
    cmd << "-type" << ip.type() << "-mask" << ip.netmask << "-interface" << ip.iface;
    cmd.exec();
}

void switchType(const SystemIp& ip) {
    log("IP address already exists in Zelvo. Switching type to specified in dump.");
    CliExec cmd = commandOn("ipmanage", "-u", ip.address);
    cmd << "-type" << ip.type();
    cmd.exec();
}

// known: the addresses that the panel has.
void setUpAddress(const SystemIp& ip, const std::map<std::string, ZelvoIp>& known) {
    const auto found = known.find(ip.address);
    if (found == known.end()) {
        createAddress(ip);
    } else if (found->second.type == ip.type()) {
        log("IP address already exists in Zelvo. Skipping.");
    } else {
        switchType(ip);
    }
}

}  // namespace

bool InitialConfiguration::initialZelvoConfiguration(const XmlNode& node) {
    bool isConfigured = true;
    guarded([&] {
        isConfigured = isPanelConfigured();
        configure(node, isConfigured);
    });
    return !isConfigured;
}

void InitialConfiguration::configure(const XmlNode& node, bool isConfigured) {
    std::list<SystemIp> addresses;
    forEachNode(node, "properties/system-ip",
                [&addresses](const XmlNode& ip) { addSystemIp(addresses, ip); });

    CliExec cmd = panelCommand("init_conf", {isConfigured ? "--update" : "--init"});
    if (isConfigured) {
        log("* skipping hostname setup");
        log("* skipping admin password setup");
    } else {
        addFirstSettings(node, cmd);
    }
    addDefaultIp(node, cmd);
    addAdminInfo(cmd);
    cmd.exec();
    setAdminLocale();
    setAdminInterface();
    log("Finished initial Zelvo configuration.");
    setUpAddresses(addresses);
}

void InitialConfiguration::addFirstSettings(const XmlNode& node, CmdLine& cmd) {
    if (node.test("properties/hostname")) {
        const std::string name = node.str("properties/hostname");
        log("* setting hostname to " + name);
        cmd << "-hostname" << name;
    } else {
        log("* skipping hostname setup");
    }
    if (root.test("admin/preferences/admin-password")) {
        log("* setting admin password");
        passwd password;
        password.value = passwordText(root.getNode("admin/preferences/admin-password"));
        addPasswdToCmdLine(password, cmd);
    } else {
        log("* skipping admin password setup");
    }
}

void InitialConfiguration::addDefaultIp(const XmlNode& node, CmdLine& cmd) {
    if (!node.test("properties/default-ip")) {
        return;
    }
    std::list<SystemIp> one;
    addSystemIp(one, node.getNode("properties/default-ip"));
    const SystemIp& ip = one.front();
    cmd << "-default-ip" << ip.address << "-netmask" << ip.netmask << "-iface" << ip.iface
        << "-ip-type" << ip.type();
}

void InitialConfiguration::addAdminInfo(CmdLine& cmd) {
    if (!root.test("admin/preferences/pinfo")) {
        log("* skipping admin's personal information setup");
        return;
    }
    log("* setting admin's personal information:");
    guardedEach(root, "admin/preferences/pinfo[@name != 'locale']", [&cmd](const XmlNode& item) {
        log("** " + item.str("@name"));
        requireContactData(item.str("@name"));
        setPinfo(cmd, item);
    });
}

void InitialConfiguration::setAdminLocale() {
    const std::string locale = "admin/preferences/pinfo[@name = 'locale']";
    if (root.test(locale)) {
        log("** locale");
        CliExec cmd = panelCommand("admin", {"-u"});
        setPinfo(cmd, root.getNode(locale));
        cmd.exec();
    }
}

void InitialConfiguration::setAdminInterface() {
    trySetting("admin", "-max-button-length", "admin/@max-button-length");
    trySetting("admin", "-skin", "admin/@skin");
    trySetting("init_conf", "-send_announce", "admin/@send-announce");
}

void InitialConfiguration::setUpAddresses(const std::list<SystemIp>& addresses) {
    log("Performing IP addresses setup.");
    const auto known = askAddresses();
    log("IP addresses to be processed:");
    for (const SystemIp& ip : addresses) {
        log(ip.type() + ":" + ip.address + "/" + ip.netmask + " (" + ip.iface + ")");
    }
    for (const SystemIp& ip : addresses) {
        guarded([&] { setUpAddress(ip, known); });
    }
    log("IP address setup finished");
}

void InitialConfiguration::SetCertificateOnIP(const XmlNode& node) {
    CliExec cmd = commandOn("ipmanage", "-u", node.str("ip/ip-address"));
    cmd << "-ssl_certificate" << node.str("@certificate");
    cmd.exec();
}

void addSystemIp(std::list<SystemIp>& list, const XmlNode& node) {
    list.push_back({node.str("ip/ip-address"), node.str("ip-netmask"), node.str("ip-interface"),
                    node.test("ip/ip-type = 'exclusive'")});
}

}  // namespace zelvo
