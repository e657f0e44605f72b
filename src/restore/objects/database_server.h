// A database server by what the panel knows it.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

struct DbServer {
    // Name or address.
    std::string host;
    // "mysql", "postgresql" or "mssql".
    std::string type;
    // In decimal; empty for none.
    std::string port;

    DbServer() = default;
    // Reads a `db-server` element.
    explicit DbServer(const XmlNode& element);
    DbServer(std::string serverHost, std::string serverType, std::string serverPort);

    // The server as one argument: "HOST", or "HOST:PORT" if it has a port.
    std::string server() const;

    auto operator<=>(const DbServer&) const = default;
};

}  // namespace zelvo
