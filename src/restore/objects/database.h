// Databases: on which server they are made, their users, and the load of their dumps.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "restore/objects/database_server.h"
#include "restore/objects/restored_databases.h"
#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores `database` elements of one owner.
class DatabaseDeployer : public XmlDeployDocAbility {
  public:
    using Credentials = std::pair<std::string, std::string>;

    // domainName: the domain that the databases belong to, or the name of another owner.
    // restored: learns of what was made; must outlive the deployer.
    DatabaseDeployer(std::string domainName, RestoredDatabases& restored);

    using XmlDeployDocAbility::act;
    // Restores one database: itself, its users, its dump. Raises SkippedDatabaseDeployment for one
    // whose dump cannot be loaded since nobody told the panel its administrator's password, and
    // FailedDatabaseDeployment around all other failures; those of its users are told.
    void act(XmlNode node) const override;

    // The server on which the panel makes databases of this type. The panel is asked once for each
    // in a run. Raises what CliExec::exec raises and, for an answer that is none, what
    // AnswerDocument does.
    static DbServer getDefaultServer(const std::string& type);

    // Login and password of the server's administrator. The panel is asked until it knows them.
    // Raises SkippedDatabaseDeployment, about the server, if it does not, and what the above
    // raises.
    static Credentials getServerCredentials(const DbServer& server);

  private:
    void deployDatabase(const XmlNode& node, const std::string& name,
                        const std::string& type) const;
    // Returns the panel's number for it.
    std::string create(const XmlNode& node, const std::string& name, const std::string& type,
                       const DbServer& server) const;

    static std::map<std::string, DbServer> defaultServers;
    static std::map<DbServer, Credentials> credentials;

    std::string domainName_;
    RestoredDatabases* restored_;
};

}  // namespace zelvo
