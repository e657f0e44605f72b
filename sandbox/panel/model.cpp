#include "panel/model.h"

#include <sqlite3.h>

#include <initializer_list>
#include <stdexcept>
#include <utility>
#include <variant>

namespace sandbox {

namespace {

// A lost model costs nothing, a slow one costs every test: nothing is flushed to disk, and the
// journal for going back stays in memory. Keys are what takes all below an object away with it.
constexpr char kSettings[] =
    "PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY; PRAGMA foreign_keys=ON;";

constexpr long kVersion = 2;

constexpr char kTables[] = R"(
CREATE TABLE object (id INTEGER PRIMARY KEY, kind TEXT NOT NULL, name TEXT NOT NULL,
                     parent INTEGER NOT NULL REFERENCES object ON DELETE CASCADE,
                     guid TEXT NOT NULL, UNIQUE (kind, name, parent));
CREATE UNIQUE INDEX object_guid ON object (guid) WHERE guid <> '';
CREATE INDEX object_parent ON object (parent);
CREATE TABLE option (object INTEGER NOT NULL REFERENCES object ON DELETE CASCADE,
                     tool TEXT, name TEXT, place INTEGER, value TEXT,
                     PRIMARY KEY (object, tool, name, place)) WITHOUT ROWID;
CREATE TABLE traffic (object INTEGER NOT NULL REFERENCES object ON DELETE CASCADE, row TEXT);
CREATE INDEX traffic_object ON traffic (object);
INSERT INTO object VALUES (0, 'server', 'server', 0, ''), (1, 'admin', 'admin', 0, '');
INSERT INTO option VALUES (1, 'admin', 'country', 0, 'US'), (1, 'admin', 'state', 0, 'NY'),
                          (1, 'admin', 'zip', 0, '10001');
PRAGMA user_version = 2;
)";

using Value = std::variant<std::int64_t, std::string_view>;

[[noreturn]] void failWith(sqlite3* handle) {
    throw std::runtime_error(std::string("the panel's model: ") +
                             (handle != nullptr ? sqlite3_errmsg(handle) : "out of memory"));
}

void bind(sqlite3_stmt* statement, int place, const Value& value) {
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()),
                          SQLITE_TRANSIENT);
    } else {
        sqlite3_bind_int64(statement, place, std::get<std::int64_t>(value));
    }
}

}  // namespace

// One statement with its values bound; rows are taken one by one.
class Model::Query {
  public:
    Query(Model& model, const char* sql, std::initializer_list<Value> values = {})
        : handle_(model.handle_.get()) {
        if (sqlite3_prepare_v2(handle_, sql, -1, &statement_, nullptr) != SQLITE_OK) {
            failWith(handle_);
        }
        int place = 0;
        for (const Value& value : values) {
            bind(statement_, ++place, value);
        }
    }
    ~Query() { sqlite3_finalize(statement_); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    bool next() {
        const int outcome = sqlite3_step(statement_);
        if (outcome != SQLITE_ROW && outcome != SQLITE_DONE) {
            failWith(handle_);
        }
        return outcome == SQLITE_ROW;
    }

    std::string text(int column) const {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        return data != nullptr ? std::string(data, size) : std::string();
    }

    std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }

    // Of rows that are whole rows of the table of objects.
    Object object() const { return {number(0), text(1), text(2), number(3), text(4)}; }

    std::optional<Object> firstObject() {
        return next() ? std::optional<Object>(object()) : std::nullopt;
    }

    std::vector<Object> objects() {
        std::vector<Object> found;
        while (next()) {
            found.push_back(object());
        }
        return found;
    }

  private:
    sqlite3* handle_;
    sqlite3_stmt* statement_ = nullptr;
};

void Model::Close::operator()(sqlite3* handle) const { sqlite3_close(handle); }

Model::Model(const std::string& path) {
    // One thread and one short life: a tenth of a call would be locks and counts of memory.
    // Refused, and of no matter, when this is not the first model of the process.
    sqlite3_config(SQLITE_CONFIG_SINGLETHREAD);
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    sqlite3* handle = nullptr;
    const int outcome = sqlite3_open(path.c_str(), &handle);
    handle_.reset(handle);
    if (outcome != SQLITE_OK) {
        failWith(handle);
    }
    constexpr int kPatience = 60'000;  // milliseconds that calls side by side wait for each other
    sqlite3_busy_timeout(handle, kPatience);
    run(kSettings);
    run("BEGIN IMMEDIATE");
    Query version(*this, "PRAGMA user_version");
    version.next();
    if (version.number(0) == 0) {
        makeTables();
    } else if (version.number(0) != kVersion) {
        throw std::runtime_error("the panel's model: " + path + " is of another version");
    }
}

Model::~Model() = default;

void Model::run(const char* sql) {
    if (sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        failWith(handle_.get());
    }
}

void Model::makeTables() { run(kTables); }

void Model::whenKept(std::function<void()> work) { work_.push_back(std::move(work)); }

void Model::commit() {
    for (const auto& work : work_) {
        work();
    }
    run("COMMIT");
}

Object Model::at(std::int64_t id) {
    Query query(*this, "SELECT * FROM object WHERE id=?", {id});
    query.next();
    return query.object();
}

std::optional<Object> Model::find(std::string_view kind, std::string_view name) {
    return Query(*this, "SELECT * FROM object WHERE kind=? AND name=?", {kind, name}).firstObject();
}

std::optional<Object> Model::find(std::string_view kind, std::string_view name,
                                  const Object& parent) {
    return Query(*this, "SELECT * FROM object WHERE kind=? AND name=? AND parent=?",
                 {kind, name, parent.id})
        .firstObject();
}

std::optional<Object> Model::findGuid(std::string_view guid) {
    return Query(*this, "SELECT * FROM object WHERE guid=? AND guid <> ''", {guid}).firstObject();
}

std::vector<Object> Model::all(std::string_view kind) {
    return Query(*this, "SELECT * FROM object WHERE kind=? ORDER BY name", {kind}).objects();
}

std::vector<Object> Model::children(const Object& parent) {
    return Query(*this, "SELECT * FROM object WHERE parent=? AND id<>parent ORDER BY kind, name",
                 {parent.id})
        .objects();
}

Object Model::insert(std::string_view kind, std::string_view name, const Object& parent) {
    Query(*this, "INSERT INTO object VALUES (NULL, ?, ?, ?, '')", {kind, name, parent.id}).next();
    return {sqlite3_last_insert_rowid(handle_.get()), std::string(kind), std::string(name),
            parent.id, ""};
}

void Model::erase(const Object& object) {
    Query(*this, "DELETE FROM object WHERE id=?", {object.id}).next();
}

void Model::setParent(const Object& object, const Object& parent) {
    Query(*this, "UPDATE object SET parent=? WHERE id=?", {parent.id, object.id}).next();
}

void Model::setGuid(const Object& object, std::string_view guid) {
    Query(*this, "UPDATE object SET guid=? WHERE id=?", {guid, object.id}).next();
}

void Model::setName(const Object& object, std::string_view name) {
    Query(*this, "UPDATE object SET name=? WHERE id=?", {name, object.id}).next();
}

void Model::setKind(const Object& object, std::string_view kind) {
    Query(*this,
          "UPDATE OR REPLACE option SET tool = ?1 || substr(tool, length(?2) + 1)"
          " WHERE object=?3 AND (tool = ?2 OR tool GLOB ?2 || '_*')",
          {kind, object.kind, object.id})
        .next();
    Query(*this, "UPDATE object SET kind=? WHERE id=?", {kind, object.id}).next();
}

void Model::setOption(const Object& object, const Option& option) {
    Query(*this, "INSERT OR REPLACE INTO option VALUES (?, ?, ?, 0, ?)",
          {object.id, option.tool, option.name, option.value})
        .next();
}

void Model::addOption(const Object& object, const Option& option) {
    Query(*this,
          "INSERT INTO option SELECT ?1, ?2, ?3, coalesce(max(place) + 1, 0), ?4 FROM option"
          " WHERE object=?1 AND tool=?2 AND name=?3",
          {object.id, option.tool, option.name, option.value})
        .next();
}

void Model::setList(const Object& object, std::string_view tool, std::string_view name,
                    const std::vector<std::string>& values) {
    Query(*this, "DELETE FROM option WHERE object=? AND tool=? AND name=?", {object.id, tool, name})
        .next();
    std::int64_t place = 0;
    for (const std::string& value : values) {
        Query(*this, "INSERT INTO option VALUES (?, ?, ?, ?, ?)",
              {object.id, tool, name, place++, value})
            .next();
    }
}

std::optional<std::string> Model::option(const Object& object, std::string_view tool,
                                         std::string_view name) {
    Query query(*this,
                "SELECT value FROM option WHERE object=? AND tool=? AND name=?"
                " ORDER BY place DESC",
                {object.id, tool, name});
    return query.next() ? std::optional<std::string>(query.text(0)) : std::nullopt;
}

std::vector<Option> Model::options(const Object& object) {
    Query query(*this,
                "SELECT tool, name, value FROM option WHERE object=? ORDER BY tool, name, place",
                {object.id});
    std::vector<Option> found;
    while (query.next()) {
        found.push_back({query.text(0), query.text(1), query.text(2)});
    }
    return found;
}

void Model::addTrafficRow(const Object& object, std::string_view row) {
    Query(*this, "INSERT INTO traffic VALUES (?, ?)", {object.id, row}).next();
}

long Model::countTrafficRows(const Object& object) {
    Query query(*this, "SELECT count(*) FROM traffic WHERE object=?", {object.id});
    query.next();
    return static_cast<long>(query.number(0));
}

}  // namespace sandbox
