// Owners of what the MySQL client library hands out, for the files of the database layer.
#pragma once

#include <mysql.h>

#include <memory>
#include <string>

struct DbConnectionCloser {
    void operator()(MYSQL* connection) const { mysql_close(connection); }
};
using DbConnection = std::unique_ptr<MYSQL, DbConnectionCloser>;

struct DbResultFreer {
    void operator()(MYSQL_RES* rows) const { mysql_free_result(rows); }
};
using DbResult = std::unique_ptr<MYSQL_RES, DbResultFreer>;

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

// Returns the text as escape_mysql_param does.
std::string escaped(MYSQL* connection, const char* text);

// As messlog2 with no flag, without a system error: what the library said stands in the message,
// and errno belongs to something else.
void reportDb(int exitCode, const char* format, ...) __attribute__((format(printf, 2, 3)));
