#include "restore/objects/database_server.h"

#include <utility>

namespace zelvo {

DbServer::DbServer(const XmlNode& element)
    : DbServer(element.str("host"), element.str("@type"), element.str("port")) {}

DbServer::DbServer(std::string serverHost, std::string serverType, std::string serverPort)
    : host(std::move(serverHost)), type(std::move(serverType)), port(std::move(serverPort)) {}

std::string DbServer::server() const { return port.empty() ? host : host + ":" + port; }

}  // namespace zelvo
