#include "restore/domain/protected_directory.h"

#include <boost/algorithm/string/join.hpp>
#include <utility>
#include <vector>

#include "commons/errors.h"
#include "report/guard.h"
#include "report/object_logger.h"
#include "report/termination_lines.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

namespace {

// The kinds of access that the directory is protected for, joined with commas.
std::string accessTypes(const XmlNode& node) {
    std::vector<std::string> types;
    for (const std::string type : {"ssl", "nonssl", "cgi"}) {
        if (node.str("@" + type) == "true") {
            types.push_back(type);
        }
    }
    return boost::algorithm::join(types, ",");
}

// Raises ExecCmd::Failed for a code other than 0 and 2: with 2 the utility has done its work too.
void execForgiving(CliExec& cmd) {
    const int code = cmd.exec(std::nothrow);
    if (code != 0 && code != 2) {
        cmd.reportError();
    }
}

}  // namespace

tProtDirDeployer::tProtDirDeployer(std::string domainName) : domainName_(std::move(domainName)) {}

void tProtDirDeployer::act(XmlNode node) const {
    const std::string name = node.str("@name");
    const ObjectLogger logger(name, "protected directory");
    wrapped(EXC(FailedProtDirDeployment) % name % domainName_,
            [&] { deployDirectory(node, name); });
}

void tProtDirDeployer::deployDirectory(const XmlNode& node, const std::string& name) const {
    CliExec cmd = createCommand("protdir", name);
    cmd << "-domain" << domainName_;
    const std::string types = accessTypes(node);
    if (!types.empty()) {
        cmd << "-type" << types;
    }
    appendOptions(node, cmd, {{"-title", "@title", ifSet}});
    execForgiving(cmd);
    deployEach(node, "pduser", tProtDirUserDeployer(domainName_, name));
}

tProtDirUserDeployer::tProtDirUserDeployer(std::string domainName, std::string directory)
    : domainName_(std::move(domainName)), directory_(std::move(directory)) {}

void tProtDirUserDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    const std::string name = node.str("@name");
    wrapped(EXC(FailedProtDirUserDeployment) % name % directory_ % domainName_,
            [&] { addUser(node, name); });
}

void tProtDirUserDeployer::addUser(const XmlNode& node, const std::string& name) const {
    if (name.empty()) {
        throw EXC(AssertionFailed) % "is_xml_attr_set(attr_name)";
    }
    CliExec cmd = updateCommand("protdir", directory_);
    cmd << "-domain" << domainName_ << "-add_user" << name;
    getPasswordOpts(node, cmd);
    execForgiving(cmd);
}

}  // namespace zelvo
