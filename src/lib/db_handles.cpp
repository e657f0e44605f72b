#include "lib/db_handles.h"

#include <mysql.h>

#include <cerrno>
#include <cstdarg>

#include "lib/liblog.h"

void DbConnectionCloser::operator()(MYSQL* connection) const { mysql_close(connection); }

void DbResultFreer::operator()(MYSQL_RES* rows) const { mysql_free_result(rows); }

void reportDb(int exitCode, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    errno = 0;
    vmesslog2(exitCode, 0, format, arguments);
    va_end(arguments);
}
