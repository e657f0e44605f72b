// The database servers that the panel manages.
#pragma once

#include <optional>

#include "restore/objects/database_server.h"
#include "xml/xml_node.h"

namespace zelvo {

// A database server with the account that the panel uses on it.
struct DbServerConfig : DbServer {
    // Reads a `db-server` element.
    explicit DbServerConfig(const XmlNode& element);

    // The element `db-admin`, which has the name and the password.
    std::optional<XmlNode> admin;
};

// Registers each `db-servers/db-server` of the `server` element that has a `db-admin`; one without
// is passed over, which the debug log says. The failure of one is told, and costs no other.
void deployDatabaseServers(const XmlNode& server);

}  // namespace zelvo
