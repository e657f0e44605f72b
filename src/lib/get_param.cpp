#include "lib/get_param.h"

#include <mysql.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>

#include "lib/dbconnect.h"

namespace {

char answer[4096];

// The value of the first row, if there is such a thing, into the static buffer.
void keepValue(MYSQL_RES* rows, unsigned column) {
    answer[0] = '\0';
    const MYSQL_ROW row = mysql_fetch_row(rows);
    if (row == nullptr || column >= mysql_num_fields(rows) || row[column] == nullptr) {
        return;
    }
    const std::size_t length = mysql_fetch_lengths(rows)[column];
    const std::size_t kept = std::min(length, sizeof(answer) - 1);
    memcpy(answer, row[column], kept);
    answer[kept] = '\0';
}

// A query without rows, such as an update, has no result and is no failure.
bool storeResult(MYSQL* connection, DbResult& rows) {
    rows.reset(mysql_store_result(connection));
    return rows != nullptr || mysql_field_count(connection) == 0;
}

}  // namespace

const char* get_param(const char* name, MYSQL* connection) {
    return get_param_simple(name, "misc", "param", "val", connection);
}

const char* get_param_simple(const char* value, const char* table, const char* keyColumn,
                             const char* wantedColumn, MYSQL* connection) {
    const UsedConnection used(connection);
    if (used.get() == nullptr) {
        return nullptr;
    }
    const std::string query = std::string("select ") + wantedColumn + " from " + table + " where " +
                              keyColumn + "='" + escaped(used.get(), value) + "'";
    return get_param_query(query.c_str(), used.get());
}

const char* get_param_query(const char* query, MYSQL* connection) {
    return get_param_from_bigquery(query, connection, 0);
}

const char* get_param_from_bigquery(const char* query, MYSQL* connection, unsigned column) {
    const UsedConnection used(connection);
    if (used.get() == nullptr) {
        return nullptr;
    }
    DbResult rows;
    if (mysql_query(used.get(), query) != 0 || !storeResult(used.get(), rows)) {
        reportDb(0, "Unable to query parameter by query %s: %s\n", query, mysql_error(used.get()));
        return nullptr;
    }
    answer[0] = '\0';
    if (rows != nullptr) {
        keepValue(rows.get(), column);
    }
    return answer;
}

unsigned long get_free_id(const char* table, MYSQL* connection) {
    const std::string query = std::string("SELECT max(id) FROM ") + table;
    const char* const highest = get_param_query(query.c_str(), connection);
    return highest != nullptr ? strtoul(highest, nullptr, 10) + 1 : 0;
}
