#include "restore/objects/database_user.h"

#include <boost/regex.hpp>
#include <utility>

#include "report/guard.h"
#include "report/object_logger.h"
#include "restore/objects/database_version.h"
#include "restore/toolbox/deploy_action.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/passwd.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

DatabaseUserDeployer::DatabaseUserDeployer(std::string databaseName, std::string databaseType,
                                           std::string databaseId, RestoredDatabases& restored)
    : databaseName_(std::move(databaseName)),
      databaseType_(std::move(databaseType)),
      databaseId_(std::move(databaseId)),
      restored_(&restored) {}

DatabaseUserDeployer::~DatabaseUserDeployer() {
    for (const std::string& login : tempUsers_) {
        // Whatever is under way says more than what comes of this.
        silenced([&] { debugLogged([&] { removeUser(login); }); });
    }
}

struct DatabaseUserDeployer::User {
    std::string name;
    // Of its database.
    std::string type;
    passwd password = {};
};

void DatabaseUserDeployer::act(XmlNode node) const {
    User user{node.str("@name"), node.getParent().str("@type")};
    const ObjectLogger logger(user.name, "database user");
    user.password = ensureNoEmptyPassword(passwd(node), "Database user " + user.name);
    if (user.password.type == passwd::ENCRYPTED && isNewStyleMysqlPassword(user.password.value) &&
        !panelSupportsNewStylePassword()) {
        throw EXC(IncompatibleDbPasswordVersion) % user.name;
    }
    wrapped(
        EXC(FailedDatabaseUserDeployment) % user.name % databaseName_,
        [&] { deployUser(node, user); }, [this] { restored_->userFailed = true; });
}

void DatabaseUserDeployer::deployUser(const XmlNode& node, const User& user) const {
    const tDeployAction action(node);
    CliExec cmd = updateCommand("database", databaseName_);
    if (!tDeployAction::DeployActionSummarySkip(action.action())) {
        if (action.DeployActionUpdate()) {
            // Made anew, the user has the password of the dump, and only the hosts of the dump.
            removeUser(user.name);
        }
        cmd << "-add_user" << user.name << "-type" << user.type << "-print-id";
        addPasswdToCmdLine(user.password, cmd);
    }
    cmd.exec();
    keepId(cmd.stdout);
    node.foreach (
        "accesshost", [&](const XmlNode& host) { allowHost(user.name, host.str(".")); },
        deploy_error_func);
}

void DatabaseUserDeployer::keepId(const std::string& output) const {
    static const boost::regex kNewId("^\\s*New database user ID = (\\d+)\\s*$");
    boost::smatch match;
    if (boost::regex_match(output, match, kNewId)) {
        restored_->users.push_back({databaseId_, match.str(1)});
    }
}

void DatabaseUserDeployer::allowHost(const std::string& name, const std::string& host) const {
    CliExec cmd = updateCommand("database", databaseName_);
    cmd << "-update_user" << name << "-add-access" << host;
    cmd.exec();
}

void DatabaseUserDeployer::removeUser(const std::string& name) const {
    CliExec cmd = updateCommand("database", databaseName_);
    cmd << "-remove_user" << name;
    cmd.exec();
}

void DatabaseUserDeployer::createTempUser(const std::string& login, const std::string& password) {
    CliExec cmd = updateCommand("database", databaseName_);
    cmd << "-add_user" << login << "-type" << databaseType_;
    passwd plain;
    plain.value = password;
    addPasswdToCmdLine(plain, cmd);
    tempUsers_.push_back(login);
    try {
        cmd.exec();
    } catch (const Exc<&ExecCmd::Failed>&) {
        // One that refuses has no user to remove, as a rule: it may have made him and failed behind
        // that, and then he stays. Of one that was killed, or whose answer was lost, nobody knows.
        if (cmd.retCode > 0) {
            tempUsers_.pop_back();
        }
        throw;
    }
}

}  // namespace zelvo
