#include "model.h"

#include <sqlite3.h>
#include <initializer_list>
#include <stdexcept>

namespace sandbox {
namespace {

// A lost model costs nothing, a slow one costs every test: nothing is flushed
// to disk, and the journal for going back stays in memory.
constexpr char kFast[] = "PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY;";

constexpr char kTables[] = R"(
CREATE TABLE object (kind TEXT, name TEXT, owner TEXT, guid TEXT,
                     PRIMARY KEY (kind, name)) WITHOUT ROWID;
CREATE UNIQUE INDEX object_guid ON object (guid) WHERE guid <> '';
CREATE INDEX object_owner ON object (owner);
CREATE TABLE option (kind TEXT, object TEXT, tool TEXT, name TEXT, value TEXT,
                     PRIMARY KEY (kind, object, tool, name)) WITHOUT ROWID;
CREATE TABLE traffic (kind TEXT, object TEXT, row TEXT);
CREATE INDEX traffic_object ON traffic (kind, object);
INSERT INTO object VALUES ('admin', 'admin', '', '');
INSERT INTO option VALUES ('admin', 'admin', 'admin', 'country', 'US'),
                          ('admin', 'admin', 'admin', 'state', 'NY'),
                          ('admin', 'admin', 'admin', 'zip', '10001');
PRAGMA user_version = 1;
)";

[[noreturn]] void failWith(sqlite3* handle) {
    throw std::runtime_error(std::string("the panel's model: ") +
                             (handle != nullptr ? sqlite3_errmsg(handle) : "out of memory"));
}

}  // namespace

// One statement with its values bound; rows are taken one by one.
class Model::Query {
  public:
    Query(sqlite3* handle, const char* sql, std::initializer_list<std::string_view> values = {})
        : handle_(handle) {
        if (sqlite3_prepare_v2(handle, sql, -1, &statement_, nullptr) != SQLITE_OK)
            failWith(handle);
        int place = 0;
        for (const std::string_view value : values) {
            sqlite3_bind_text(statement_, ++place, value.data(), static_cast<int>(value.size()),
                              SQLITE_TRANSIENT);
        }
    }
    ~Query() { sqlite3_finalize(statement_); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    bool next() {
        const int outcome = sqlite3_step(statement_);
        if (outcome != SQLITE_ROW && outcome != SQLITE_DONE) failWith(handle_);
        return outcome == SQLITE_ROW;
    }

    std::string text(int column) const {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        return data != nullptr ? std::string(data, size) : std::string();
    }

    long number(int column) const {
        return static_cast<long>(sqlite3_column_int64(statement_, column));
    }

    Object object() const { return {text(0), text(1), text(2), text(3)}; }

    std::vector<Object> objects() {
        std::vector<Object> found;
        while (next()) found.push_back(object());
        return found;
    }

  private:
    sqlite3* handle_;
    sqlite3_stmt* statement_ = nullptr;
};

void Model::Close::operator()(sqlite3* handle) const { sqlite3_close(handle); }

Model::Model(const std::string& path) {
    sqlite3* handle = nullptr;
    const int outcome = sqlite3_open(path.c_str(), &handle);
    handle_.reset(handle);
    if (outcome != SQLITE_OK) failWith(handle);
    constexpr int kPatience = 60'000;  // milliseconds that calls side by side wait for each other
    sqlite3_busy_timeout(handle, kPatience);
    run(kFast);
    run("BEGIN IMMEDIATE");
    Query version(handle, "PRAGMA user_version");
    version.next();
    if (version.number(0) == 0) makeTables();
}

Model::~Model() = default;

void Model::run(const char* sql) {
    if (sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        failWith(handle_.get());
    }
}

void Model::makeTables() { run(kTables); }

void Model::commit() { run("COMMIT"); }

std::optional<Object> Model::find(std::string_view kind, std::string_view name) {
    Query query(handle_.get(), "SELECT kind, name, owner, guid FROM object WHERE kind=? AND name=?",
                {kind, name});
    if (!query.next()) return std::nullopt;
    return query.object();
}

std::optional<Object> Model::findGuid(std::string_view guid) {
    Query query(handle_.get(),
                "SELECT kind, name, owner, guid FROM object WHERE guid=? AND guid <> ''", {guid});
    if (!query.next()) return std::nullopt;
    return query.object();
}

std::vector<Object> Model::all(std::string_view kind) {
    return Query(handle_.get(),
                 "SELECT kind, name, owner, guid FROM object WHERE kind=? ORDER BY name", {kind})
        .objects();
}

std::vector<Object> Model::ownedBy(std::string_view owner) {
    return Query(handle_.get(),
                 "SELECT kind, name, owner, guid FROM object WHERE owner=? ORDER BY kind, name",
                 {owner})
        .objects();
}

void Model::insert(const Object& object) {
    Query(handle_.get(), "INSERT INTO object VALUES (?, ?, ?, ?)",
          {object.kind, object.name, object.owner, object.guid})
        .next();
}

void Model::erase(const Object& object) {
    for (const char* sql : {"DELETE FROM object WHERE kind=? AND name=?",
                            "DELETE FROM option WHERE kind=? AND object=?",
                            "DELETE FROM traffic WHERE kind=? AND object=?"}) {
        Query(handle_.get(), sql, {object.kind, object.name}).next();
    }
}

void Model::setOwner(const Object& object, std::string_view owner) {
    Query(handle_.get(), "UPDATE object SET owner=? WHERE kind=? AND name=?",
          {owner, object.kind, object.name})
        .next();
}

void Model::setGuid(const Object& object, std::string_view guid) {
    Query(handle_.get(), "UPDATE object SET guid=? WHERE kind=? AND name=?",
          {guid, object.kind, object.name})
        .next();
}

void Model::setKind(const Object& object, std::string_view kind) {
    for (const char* sql : {"UPDATE object SET kind=? WHERE kind=? AND name=?",
                            "UPDATE option SET kind=? WHERE kind=? AND object=?",
                            "UPDATE traffic SET kind=? WHERE kind=? AND object=?"}) {
        Query(handle_.get(), sql, {kind, object.kind, object.name}).next();
    }
}

void Model::setOption(const Object& object, const Option& option) {
    Query(handle_.get(), "INSERT OR REPLACE INTO option VALUES (?, ?, ?, ?, ?)",
          {object.kind, object.name, option.tool, option.name, option.value})
        .next();
}

std::optional<std::string> Model::option(std::string_view kind, std::string_view name,
                                         std::string_view tool, std::string_view option) {
    Query query(handle_.get(),
                "SELECT value FROM option WHERE kind=? AND object=? AND tool=? AND name=?",
                {kind, name, tool, option});
    if (!query.next()) return std::nullopt;
    return query.text(0);
}

std::vector<Option> Model::options(const Object& object) {
    Query query(handle_.get(),
                "SELECT tool, name, value FROM option WHERE kind=? AND object=?"
                " ORDER BY tool, name",
                {object.kind, object.name});
    std::vector<Option> found;
    while (query.next()) found.push_back({query.text(0), query.text(1), query.text(2)});
    return found;
}

void Model::addTrafficRow(const Object& object, std::string_view row) {
    Query(handle_.get(), "INSERT INTO traffic VALUES (?, ?, ?)", {object.kind, object.name, row})
        .next();
}

long Model::countTrafficRows(const Object& object) {
    Query query(handle_.get(), "SELECT count(*) FROM traffic WHERE kind=? AND object=?",
                {object.kind, object.name});
    query.next();
    return query.number(0);
}

}  // namespace sandbox
