// Loading a dump with the client program of a database server.
#pragma once

#include <string>

#include "content/db_server_access.h"

namespace zelvo {

// Runs the client. That of "mysql" has to take --no-defaults behind other options; one that knows
// it in the first place only, as MariaDB's 10.11 does, refuses the call. server: a type other than
// "mysql" and "postgresql" loads nothing. database: its name. dump: path of the dump, without line
// feeds. Needs theDebugLog, where the password stands in clear. Raises ExecCmd::Failed.
void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& dump);

}  // namespace zelvo
