// What the panel holds: a tree of named objects with the options that they were given, in one
// SQLite file of the state directory.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace sandbox {

struct Object {
    std::int64_t id = 0;
    std::string kind;  // "client", "reseller", "domain", "ip", "domain_template", ...
    std::string name;
    std::int64_t parent = 0;  // the object that it hangs on; the server hangs on itself
    std::string guid;
};

struct Option {
    std::string tool;  // the utility that set it
    std::string name;  // without the leading "-"
    std::string value;
};

// Every failure of SQLite is a std::runtime_error. Nothing here judges whether an operation makes
// sense; that is for the utilities. Two objects of one kind, parent and name are such a failure.
class Model {
  public:
    // The object at the root, and the administrator that hangs on it.
    static constexpr std::int64_t kServer = 0;
    static constexpr std::int64_t kAdmin = 1;

    // Opens the file, makes it when it is missing, and begins the one transaction of this object's
    // life. Waits while another call has its own.
    explicit Model(const std::string& path);
    ~Model();  // what was not committed is lost
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    // What is done outside when the changes are kept: by commit(), in the order in which it was
    // given, while other calls still wait. Changes that are dropped leave nothing behind.
    void whenKept(std::function<void()> work);
    void commit();

    Object at(std::int64_t id);  // the object must exist
    // Any object of the kind and name, whatever it hangs on.
    std::optional<Object> find(std::string_view kind, std::string_view name);
    std::optional<Object> find(std::string_view kind, std::string_view name, const Object& parent);
    std::optional<Object> findGuid(std::string_view guid);
    std::vector<Object> all(std::string_view kind);      // by name
    std::vector<Object> children(const Object& parent);  // by kind, then name

    Object insert(std::string_view kind, std::string_view name, const Object& parent);
    void erase(const Object& object);  // with all that hangs on it
    void setParent(const Object& object, const Object& parent);
    void setGuid(const Object& object, std::string_view guid);
    void setName(const Object& object, std::string_view name);
    // What the utilities "KIND" and "KIND_..." set is then set by those of the new kind.
    void setKind(const Object& object, std::string_view kind);

    // Replaces the value of the same tool and name.
    void setOption(const Object& object, const Option& option);
    // Puts a value behind those of the same tool and name.
    void addOption(const Object& object, const Option& option);
    // Puts these values in place of those of the same tool and name.
    void setList(const Object& object, std::string_view tool, std::string_view name,
                 const std::vector<std::string>& values);
    std::optional<std::string> option(const Object& object, std::string_view tool,
                                      std::string_view name);
    // By tool, then name; the values of one name in the order in which they were added.
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
    std::vector<std::function<void()>> work_;
};

}  // namespace sandbox
