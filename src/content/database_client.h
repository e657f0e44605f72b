// Loading a dump with the client program of a database server.
#pragma once

#include <string>

#include "content/db_server_access.h"
#include "content/handed_dump.h"

namespace zelvo {

// Whether databases of this server are loaded at all: its type is "mysql" or "postgresql".
bool hasClient(const DbServerAccess& server);

// Runs the client. A "mysql" that refuses --no-defaults behind other options, as MariaDB's 10.11
// does, is called again with it in front. server: one without a client gets nothing loaded.
// database: its name. dump: is read by its reader, who can write nowhere; where the machine grants
// no fence (execFenced), he can still empty or make files where all users may.
//
// Needs theDebugLog, where the password stands in clear. Raises ExecCmd::Failed, also for a load
// that ended well but for statements that failed.
void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const HandedDump& dump);

}  // namespace zelvo
