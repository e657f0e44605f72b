#include "lib/put.h"

#include <mysql.h>

#include <string>

#include "lib/dbconnect.h"

int put_param(const char* name, const char* value, MYSQL* connection) {
    const UsedConnection used(connection);
    if (used.get() == nullptr) {
        return -1;
    }
    std::string query = value != nullptr ? "replace into misc (param, val) values('"
                                         : "replace into misc (param) values('";
    query += escaped(used.get(), name);
    if (value != nullptr) {
        query += "', '" + escaped(used.get(), value);
    }
    query += "')";
    if (mysql_query(used.get(), query.c_str()) != 0) {
        // The value may be a secret, so the query is not shown.
        reportDb(0, "Unable to store parameter %s: %s\n", name, mysql_error(used.get()));
        return -1;
    }
    return 0;
}
