// What an installed site application has on the panel besides itself.
#pragma once

#include <string>
#include <vector>

#include "exec/exec_cmd.h"

namespace zelvo {

// The panel's numbers, as texts.
struct LinkedResources {
    std::vector<std::string> databases;
    // Each "DATABASE:USER".
    std::vector<std::string> databaseUsers;
    std::vector<std::string> buttons;
};

// Appends "-linked-dbs", "-linked-dbus" and "-linked-cbs" with their numbers, as the registrar of
// applications takes them. One that has none is not appended.
void appendLinkedResources(const LinkedResources& linked, CmdLine& cmd);

// Takes the databases, their users and the buttons off the panel, all that the lists name. For a
// caller who gives the application up: its data goes with them. The failure of one list is told,
// and the next one follows.
void deleteLinkedResources(const std::vector<std::string>& dbs,
                           const std::vector<std::string>& dbusers,
                           const std::vector<std::string>& buttons);

}  // namespace zelvo
