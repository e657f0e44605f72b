#include "restore/domain/address_book.h"

#include <utility>

#include "report/error_functions.h"
#include "report/termination_lines.h"
#include "restore/toolbox/encoded_text.h"
#include "restore/toolbox/option_name.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/walk.h"

namespace zelvo {

namespace {

CliExec createEntry(const XmlNode& node, const std::string& owner, const std::string& type) {
    CliExec cmd = commandOn("turboaddr", "-c", node.str("@id"));
    cmd << "-owner-email" << owner << "-type" << type;
    return cmd;
}

// The dump decides what is said of a contact, and neither whose it is nor what is done.
void appendAttribute(CmdLine& cmd, const XmlNode& attribute) {
    const std::string option =
        "-" + requireOptionName(attribute.str("name()"), "an attribute",
                                {"c", "d", "u", "owner-email", "type", "members"});
    const std::string value = textOfBase64(attribute.str("."), "'" + option + "'");
    cmd << option << value;
}

}  // namespace

AddressbookContactDeployer::AddressbookContactDeployer(std::string owner)
    : owner_(std::move(owner)) {}

void AddressbookContactDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    CliExec cmd = createEntry(node, owner_, "object");
    node.foreach (
        "@*[name() != 'id']", [&cmd](const XmlNode& attribute) { appendAttribute(cmd, attribute); },
        deploy_error_func);
    cmd.exec();
}

AddressbookGroupDeployer::AddressbookGroupDeployer(std::string owner) : owner_(std::move(owner)) {}

void AddressbookGroupDeployer::act(XmlNode node) const {
    checkProgramTerminated();
    CliExec cmd = createEntry(node, owner_, "group");
    // Each member has its comma, the last one too.
    std::string members;
    forEachNode(node, "addressbook-member",
                [&members](const XmlNode& member) { members += member.str("@id") + ","; });
    cmd << "-members" << members;
    cmd.exec();
}

}  // namespace zelvo
