// Single values read from the panel's database. Each function takes an open connection or null; for
// null it opens one and closes it again. A null result is a failure, which has been reported; a row
// or a value that is not there is the empty string.
//
// Answers lie in one static buffer, which the next call overwrites, cut to 4095 bytes.
#pragma once

#include "lib/dbconnect.h"

// Returns the panel's parameter with this name.
const char* get_param(const char* name, MYSQL* connection);

// Returns wantedColumn of the first row of the table whose keyColumn is value. The value is
// escaped; the names of the table and the columns are not.
const char* get_param_simple(const char* value, const char* table, const char* keyColumn,
                             const char* wantedColumn, MYSQL* connection);

// Returns the first column of the first row that the query gives.
const char* get_param_query(const char* query, MYSQL* connection);

// Returns the column with this index, from 0, of the first row that the query gives.
const char* get_param_from_bigquery(const char* query, MYSQL* connection, unsigned column);

// Returns the number behind the highest in the column "id" of the table: 1 for an empty table, 0
// for a failure.
unsigned long get_free_id(const char* table, MYSQL* connection);
