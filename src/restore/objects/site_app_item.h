// Items of site applications as the panel's utilities name them.
#pragma once

#include <string>

#include "exec/cli_exec.h"
#include "xml/xml_node.h"

namespace zelvo {

// One item of a pool, or the package that it is made from.
struct AppItems {
    std::string name;
    std::string version;

    friend bool operator==(const AppItems&, const AppItems&) = default;
};

// What the `sapp-spec` of an element names; what it does not tell is empty.
AppItems specOf(const XmlNode& node);

// Appends "-sapp-name NAME -sapp-version VERSION".
void appendSpec(const AppItems& item, CmdLine& cmd);

// The command that gives an account an item of the server's pool for its own; it may have it
// already. login: of a client or reseller, or "admin". Raises UnsafeName.
CliExec addToPoolCommand(const std::string& login, const AppItems& item);

}  // namespace zelvo
