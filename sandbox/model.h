// What the panel holds: named objects with an owner and the options that they
// were given, in one SQLite file of the state directory.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace sandbox {

struct Object {
    std::string kind;  // "client", "reseller", "domain", "ip", "domain_template", ...
    std::string name;
    std::string owner;  // a login; "admin" for the administrator's own
    std::string guid;
};

struct Option {
    std::string tool;  // the utility that set it
    std::string name;  // without the leading "-"
    std::string value;
};

// Every failure of SQLite is a std::runtime_error. Nothing here judges whether
// an operation makes sense; that is for the utilities.
class Model {
  public:
    // Opens the file, makes it when it is missing, and begins the one
    // transaction of this object's life. Waits while another call has its own.
    explicit Model(const std::string& path);
    ~Model();  // what was not committed is lost
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    void commit();

    std::optional<Object> find(std::string_view kind, std::string_view name);
    std::optional<Object> findGuid(std::string_view guid);
    std::vector<Object> all(std::string_view kind);       // by name
    std::vector<Object> ownedBy(std::string_view owner);  // by kind, then name

    void insert(const Object& object);
    void erase(const Object& object);  // with its options and rows
    void setOwner(const Object& object, std::string_view owner);
    void setGuid(const Object& object, std::string_view guid);
    void setKind(const Object& object, std::string_view kind);

    // A later value replaces an earlier one of the same tool and name.
    void setOption(const Object& object, const Option& option);
    std::optional<std::string> option(std::string_view kind, std::string_view name,
                                      std::string_view tool, std::string_view option);
    std::vector<Option> options(const Object& object);

    void addTrafficRow(const Object& object, std::string_view row);
    long countTrafficRows(const Object& object);

  private:
    class Query;
    void run(const char* sql);
    void makeTables();

    struct Close {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace sandbox
