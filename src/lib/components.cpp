#include "lib/components.h"

#include <mysql.h>

#include <cstdio>
#include <string>
#include <utility>

#include "lib/dbconnect.h"

namespace {

// A version, or the reason why there is none.
struct LookUp {
    bool found = false;
    std::string text;
};

LookUp failure(const std::string& text, const char* detail = "") { return {false, text + detail}; }

LookUp versionIn(MYSQL* connection, MYSQL_RES* rows, const std::string& name) {
    if (mysql_num_rows(rows) > 1) {
        return failure("Duplicate record in Components table for package " + name);
    }
    if (mysql_num_rows(rows) == 0) {
        return failure("Package '" + name + "' is not found in Components table");
    }
    const MYSQL_ROW row = mysql_fetch_row(rows);
    if (row == nullptr) {
        return failure("Error during mysql_fetch_row: ", mysql_error(connection));
    }
    if (row[0] == nullptr) {
        return failure("NULL version for package '" + name + "' in database");
    }
    return {true, row[0]};
}

// connection: may be empty; it is closed when the look-up is over, since a failure may end the
// process.
LookUp lookUpVersion(DbConnection connection, const char* name) {
    if (connection == nullptr) {
        return failure("Unable to connect to the Zelvo database");
    }
    const std::string query =
        "SELECT version FROM Components WHERE name = '" + escaped(connection.get(), name) + "'";
    if (mysql_query(connection.get(), query.c_str()) != 0) {
        return failure("Error during mysql_query: ", mysql_error(connection.get()));
    }
    const DbResult rows(mysql_store_result(connection.get()));
    if (rows == nullptr) {
        return failure("Error during mysql_store_result: ", mysql_error(connection.get()));
    }
    return versionIn(connection.get(), rows.get(), name);
}

std::string versionOrExit(const char* name) {
    LookUp version = lookUpVersion(DbConnection(db_connect()), name);
    if (!version.found) {
        reportDb(1, "%s", version.text.c_str());
    }
    return std::move(version.text);
}

// The same without a report.
LookUp lookUpSilently(const char* name) {
    char reason[1024];
    DbConnection connection(zelvo_db_connect(reason, sizeof(reason)));
    return connection != nullptr ? lookUpVersion(std::move(connection), name) : failure(reason);
}

bool meansInstalled(const std::string& version) { return version != "not_installed"; }

}  // namespace

void get_pkg_version(const char* name, char* buffer, std::size_t size) {
    snprintf(buffer, size, "%s", versionOrExit(name).c_str());
}

bool try_pkg_version(const char* name, char* buffer, std::size_t size) {
    const LookUp version = lookUpSilently(name);
    snprintf(buffer, size, "%s", version.text.c_str());
    return version.found;
}

bool is_package_installed(const char* name) { return meansInstalled(versionOrExit(name)); }

bool is_package_installed_silent(const char* name) {
    const LookUp version = lookUpSilently(name);
    return version.found && meansInstalled(version.text);
}
