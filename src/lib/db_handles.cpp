#include "lib/db_handles.h"

#include <cerrno>
#include <cstdarg>
#include <cstdlib>

#include "lib/dbconnect.h"
#include "lib/liblog.h"

UsedConnection::UsedConnection(MYSQL* given)
    : own_(given == nullptr ? db_connect() : nullptr),
      used_(given == nullptr ? own_.get() : given) {
    if (used_ == nullptr) {
        reportDb(0, "Unable to connect to the mysql database\n");
    }
}

std::string escaped(MYSQL* connection, const char* text) {
    const std::unique_ptr<char, decltype(&free)> owner(escape_mysql_param(connection, text), &free);
    return owner.get();
}

void reportDb(int exitCode, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    errno = 0;
    vmesslog2(exitCode, 0, format, arguments);
    va_end(arguments);
}
