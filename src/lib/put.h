// The panel's parameters, written.
#pragma once

#include "lib/dbconnect.h"

// Stores a parameter of the panel in place of an earlier one with this name; null stores a
// parameter without a value. connection: an open one, or null to open one and close it again.
// Returns 0, or -1 for a failure, which has been reported.
int put_param(const char* name, const char* value, MYSQL* connection);
