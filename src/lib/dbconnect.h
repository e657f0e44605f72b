// Connections to the panel's MySQL database, and how a text gets into a query.
#pragma once

#include <cstddef>
#include <string>

#include "lib/db_handles.h"

// Whether the panel's tables are read as UTF-8: -1 until a connection has decided it, then 0 or 1.
extern int _mysql41_compatible;

// The functions below open the database "qrd" at "localhost" as "admin", with the first line of
// "/etc/qrd/.qrd.shadow" (at most 99 bytes of it) as the password. They return an open connection,
// which the caller closes with mysql_close, or null with the reason in errorBuffer of size bytes,
// ended by a zero. errorBuffer is empty when nothing went wrong.

// A connection as it is.
MYSQL* zelvo_db_connect_raw_ex(char* errorBuffer, std::size_t size);

// A connection that checks no foreign keys and speaks the character set of the panel's tables: none
// is chosen for a server before 4.1; "utf8", or "binary" when the panel's parameter
// "mysql41_compatible" is "false", empty or missing, for all others. When one of the queries that
// find this out fails, the reason is in errorBuffer and the connection is returned as it is then.
MYSQL* zelvo_db_connect_ex(char* errorBuffer, std::size_t size);

// The same, but a connection on which the last query failed (mysql_errno) is closed and null
// returned.
MYSQL* zelvo_db_connect(char* errorBuffer, std::size_t size);

// The same; the reason of a failure is reported.
MYSQL* db_connect();

// Another name of zelvo_db_connect.
MYSQL* db_connect_nothrow(char* buffer, std::size_t size);

// Returns _mysql41_compatible, which a connection decides first if none has yet. A failure to
// connect is reported and leaves it at -1.
int db_is_mysql41_compatible();

// Returns the text as it stands between single quotes in a query for this connection, which must be
// open, in a new buffer that the caller frees.
char* escape_mysql_param(MYSQL* connection, const char* text);

// The same as a string.
std::string escaped(MYSQL* connection, const char* text);

// The connection that a caller passed, or else one of its own that is closed at the end.
class UsedConnection {
  public:
    // given: an open connection, or null. That none can be opened is reported.
    explicit UsedConnection(MYSQL* given);

    // Null when there is no connection.
    MYSQL* get() const { return used_; }

  private:
    DbConnection own_;
    MYSQL* used_;
};
