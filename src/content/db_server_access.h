// How a database server is reached.
#pragma once

#include <string>

namespace zelvo {

struct DbServerAccess {
    // "mysql", "postgresql" or "mssql".
    std::string type;
    std::string login;
    std::string password;
    // Name or address; empty for the client's own default.
    std::string host;
    // In decimal; empty for the client's own default.
    std::string port;
};

}  // namespace zelvo
