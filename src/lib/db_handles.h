// Owners of what the MySQL client library hands out, for the files of the database layer, and how
// they report what went wrong.
#pragma once

#include <memory>

// A connection of the client library, and the rows that a query gave.
struct st_mysql;
using MYSQL = st_mysql;
struct st_mysql_res;
using MYSQL_RES = st_mysql_res;

struct DbConnectionCloser {
    void operator()(MYSQL* connection) const;
};
using DbConnection = std::unique_ptr<MYSQL, DbConnectionCloser>;

struct DbResultFreer {
    void operator()(MYSQL_RES* rows) const;
};
using DbResult = std::unique_ptr<MYSQL_RES, DbResultFreer>;

// As messlog2 with no flag, without a system error: what the library said stands in the message,
// and errno belongs to something else.
void reportDb(int exitCode, const char* format, ...) __attribute__((format(printf, 2, 3)));
