// The users of one database: those of the dump, and those that exist while its content is loaded.
#pragma once

#include <string>
#include <vector>

#include "restore/objects/restored_databases.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores `dbuser` elements.
class DatabaseUserDeployer : public XmlDeployDocAbility {
  public:
    // databaseType: "mysql", "postgresql" or "mssql". databaseId: the panel's number for it, empty
    // where that is not known. restored: learns of the users; must outlive the deployer.
    DatabaseUserDeployer(std::string databaseName, std::string databaseType, std::string databaseId,
                         RestoredDatabases& restored);
    // Removes the temporary users, whatever is under way; that one stays is told in the debug log
    // alone.
    ~DatabaseUserDeployer() override;
    DatabaseUserDeployer(const DatabaseUserDeployer&) = delete;
    DatabaseUserDeployer& operator=(const DatabaseUserDeployer&) = delete;

    using XmlDeployDocAbility::act;
    // Restores one user. Raises NoParentNode, AssertionFailed for a password of no known type,
    // IncompatibleDbPasswordVersion for one that this server does not know, CantReadPkgVersion, and
    // FailedDatabaseUserDeployment around what comes after these. The failure of a host that the
    // user may come from is told.
    void act(XmlNode node) const override;

    // Makes a user of the database who lives as long as the deployer. Raises what CliExec::exec
    // raises.
    void createTempUser(const std::string& login, const std::string& password);

  private:
    struct User;

    void deployUser(const XmlNode& node, const User& user) const;
    void keepId(const std::string& output) const;
    void allowHost(const std::string& name, const std::string& host) const;
    void removeUser(const std::string& name) const;

    std::string databaseName_;
    std::string databaseType_;
    std::string databaseId_;
    RestoredDatabases* restored_;
    std::vector<std::string> tempUsers_;
};

}  // namespace zelvo
