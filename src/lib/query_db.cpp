#include "lib/query_db.h"

#include "lib/dbconnect.h"
#include "lib/get_param.h"

namespace zelvo {

std::string QueryDb(const std::string& query) {
    char reason[1024];
    const DbConnection connection(zelvo_db_connect(reason, sizeof(reason)));
    if (connection == nullptr) {
        reportDb(0, "%s", reason);
        return "";
    }
    const char* const value = get_param_from_bigquery(query.c_str(), connection.get(), 0);
    return value != nullptr ? value : "";
}

std::string GetNameFromDB(const std::string& type, long id) {
    if (type == "reseller" || type == "client") {
        return QueryDb("select login from clients where id=" + std::to_string(id));
    }
    if (type == "domain") {
        return QueryDb("select name from domains where id=" + std::to_string(id));
    }
    return "";
}

}  // namespace zelvo
