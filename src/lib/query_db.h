// Answers of the panel's database for the classes.
#pragma once

#include <string>

namespace zelvo {

// Returns the first column of the first row that the query gives, at most 4095 bytes of it, read on
// a connection of its own. Empty when there is no such value, and for a failure, which has been
// reported.
std::string QueryDb(const std::string& query);

// Returns the login of the client or reseller, or the name of the domain, with this id. type:
// "client", "reseller" or "domain"; any other gives the empty string. A failure is one of QueryDb.
std::string GetNameFromDB(const std::string& type, long id);

}  // namespace zelvo
