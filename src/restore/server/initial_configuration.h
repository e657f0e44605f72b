// The first step of a server's restore: a bare panel becomes a configured one.
#pragma once

#include <list>
#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// An address of the server.
struct SystemIp {
    std::string address;
    std::string netmask;
    // Name of the network interface.
    std::string iface;
    // Of one client, and not shared among all.
    bool exclusive = false;

    // The type in the panel's words: "exclusive" or "shared".
    std::string type() const { return exclusive ? "exclusive" : "shared"; }
};

// Configures the panel from the dump's `server` and `admin` elements: host name and password only
// on a panel that was never configured, the rest on any.
class InitialConfiguration : public tDeployDocAbility {
  public:
    // node: the `server` element. Returns whether the panel said that it was not configured before,
    // also when its configuration failed. Failures go to deploy_error_func: no answer to that
    // question, or the first one in the panel's settings, ends those, one of an address costs that
    // address alone.
    static bool initialZelvoConfiguration(const XmlNode& node);

    // Tells the panel which certificate a `properties/system-ip` shows; one without @certificate
    // gets an empty name. Raises what CliExec::exec raises.
    static void SetCertificateOnIP(const XmlNode& node);

  private:
    static void configure(const XmlNode& node, bool isConfigured);
    static void addFirstSettings(const XmlNode& node, CmdLine& cmd);
    static void addDefaultIp(const XmlNode& node, CmdLine& cmd);
    static void addAdminInfo(CmdLine& cmd);
    static void setAdminLocale();
    static void setAdminInterface();
    static void setUpAddresses(const std::list<SystemIp>& addresses);
};

// Appends the address that a `properties/system-ip` or `properties/default-ip` describes.
void addSystemIp(std::list<SystemIp>& list, const XmlNode& node);

}  // namespace zelvo
