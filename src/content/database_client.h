// Loading a dump with the client program of a database server.
#pragma once

#include <string>

#include "content/db_server_access.h"

namespace zelvo {

// Whether databases of this server are loaded at all: its type is "mysql" or "postgresql".
bool hasClient(const DbServerAccess& server);

// Makes a dump safe to load: its author must not run commands as the user that loads it. dump: path
// of a regular file, which is replaced. Raises UnExpectedResult when it cannot be written.
void forbidShell(const DbServerAccess& server, const std::string& dump);

// Runs the client. A "mysql" that refuses --no-defaults behind other options, as MariaDB's 10.11
// does, is called again with it in front. server: one without a client gets
// nothing loaded. database: its name. dump: path of the dump, without line
// feeds. Needs theDebugLog, where the password stands in clear. Raises ExecCmd::Failed, also for
// a load that ended well but for statements that failed.
void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& dump);

}  // namespace zelvo
