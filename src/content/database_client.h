// Loading a dump with the client program of a database server.
#pragma once

#include <string>
#include <vector>

#include "content/db_server_access.h"

namespace zelvo {

// Where a mysql client gets --no-defaults: some know it as their very first argument only.
enum class NoDefaults { kBehindServer, kFirst };

// Loads the one dump of an archive that was unpacked into a directory where nobody else works. A
// "mysql" that refuses --no-defaults behind other options, as MariaDB's 10.11 does, is called again
// with it in front. names: what was unpacked, relative to the directory, directories with "/" at
// their end. server: one without a client gets nothing loaded. database: its name. The dump is read
// by an account that can write nowhere; where the machine grants no fence (execFenced), he can
// still empty or make files where all users may.
//
// Needs theDebugLog, where the password stands in clear. Raises ExecCmd::Failed, also for a load
// that ended well but for statements that failed; UnExpectedResult for no names and, behind the
// load, for more files than one; what HandedDump raises.
void loadDatabase(const DbServerAccess& server, const std::string& database,
                  const std::string& directory, const std::vector<std::string>& names,
                  NoDefaults place);

}  // namespace zelvo
