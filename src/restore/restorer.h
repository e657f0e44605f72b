// The order of a restore: what is done with a dump from its top to its end.
#pragma once

#include <string>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores the dump that the settings of tDeployDocAbility name. Serves for one call.
class ZelvoDumpRestorer : public tDeployDocAbility {
  public:
    // Restores the server, the administrator, resellers, clients, domains, mail names and
    // databases, and does what only makes sense once all of them stand. What fails is logged with
    // its object; what is no ExTraceable leaves, MigrationTerminatedException among it.
    void operator()();

    // Each restores one element of the dump's top level. Raises what costs the element as a whole:
    // UnknownParentClassObject for an owner that is not found, and what its deployer raises.
    static void deployServer(const XmlNode& node);
    static void deployReseller(const XmlNode& node);
    static void deployClient(const XmlNode& node);
    static void deployDomain(const XmlNode& node);
    static void deployMailname(const XmlNode& node);
    static void deployDatabase(const XmlNode& node);

    // The name of the panel's object with that guid, "admin" for an empty guid. Asks the panel
    // each time. Raises UnknownParentClassObject.
    static std::string getParentByGuidId(const std::string& guid);

    // Raises ClientDoesNotExist if the panel has no client of that login.
    static void checkClientPresence(const std::string& name);

  private:
    static void deployTopLevel();
    static void reconfigureWebserverIfAsked();
    static void repairStatistics();
    static void setDefaultDomains();
    // The owner of an element of the top level, with a line in the debug log for one whose owner is
    // not found.
    static std::string ownerOf(const XmlNode& node);
};

}  // namespace zelvo
