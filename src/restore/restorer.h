// The order of a restore: what is done with a dump from its top to its end.
#pragma once

#include <string>

#include "restore/deploy_doc_ability.h"

namespace zelvo {

// Restores the dump that the settings of tDeployDocAbility name. Serves for one call.
class ZelvoDumpRestorer : public virtual tDeployDocAbility {
  public:
    // Restores the server, the administrator, resellers, clients, domains, mail names and
    // databases, and does what only makes sense once all of them stand. What fails is logged with
    // its object; what is no ExTraceable leaves, MigrationTerminatedException among it.
    void operator()();

    // Each restores one element of the dump's top level.
    void deployServer(const XmlNode& node) const;
    void deployReseller(const XmlNode& node) const;
    void deployClient(const XmlNode& node) const;
    void deployDomain(const XmlNode& node) const;
    void deployMailname(const XmlNode& node) const;
    void deployDatabase(const XmlNode& node) const;

    // The name of the panel's object with that guid, "admin" for an empty guid. Asks the panel
    // each time. Raises UnknownParentClassObject.
    static std::string getParentByGuidId(const std::string& guid);

    // Raises ClientDoesNotExist if the panel has no client of that login.
    static void checkClientPresence(const std::string& name);

  private:
    void deployTopLevel() const;
    void reconfigureWebserverIfAsked() const;
    void repairStatistics() const;
    void setDefaultDomains() const;
};

}  // namespace zelvo
