#include "lib/dbconnect.h"

#include <mysql.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "lib/admin_password.h"
#include "lib/libsafe.h"

int _mysql41_compatible = -1;

namespace {

// Where the caller wants to read what went wrong.
class ErrorBuffer {
  public:
    ErrorBuffer(char* buffer, std::size_t size) : buffer_(buffer), size_(size) { write("%s", ""); }

    // format: with one "%s", for which the reason stands.
    void write(const char* format, const char* reason) __attribute__((format(printf, 2, 0)));

    // stage: the query that failed.
    void set_db_errmsg(MYSQL* connection, const char* stage);

  private:
    char* buffer_;
    std::size_t size_;
};

void ErrorBuffer::write(const char* format, const char* reason) {
    snprintf(buffer_, size_, format, reason);
}

void ErrorBuffer::set_db_errmsg(MYSQL* connection, const char* stage) {
    const unsigned code = mysql_errno(connection);
    if (code == 0) {
        snprintf(buffer_, size_, "DB error (%s): unknown error", stage);
    } else {
        snprintf(buffer_, size_, "DB error (%s) %u: %s", stage, code, mysql_error(connection));
    }
}

bool hasPrefix(const char* text, const char* prefix) {
    return strncmp(text, prefix, strlen(prefix)) == 0;
}

// Returns the rows, or null with the reason in the buffer.
DbResult ask(MYSQL* connection, const char* query, const char* stage, ErrorBuffer& error) {
    if (mysql_query(connection, query) != 0) {
        error.set_db_errmsg(connection, stage);
        return nullptr;
    }
    DbResult rows(mysql_store_result(connection));
    if (rows == nullptr) {
        error.set_db_errmsg(connection, "store query result");
    }
    return rows;
}

enum class Server { kUnknown, kOld, kCurrent };

Server askVersion(MYSQL* connection, ErrorBuffer& error) {
    const DbResult rows = ask(connection, "SHOW VARIABLES LIKE 'version'", "query version", error);
    if (rows == nullptr) {
        return Server::kUnknown;
    }
    const MYSQL_ROW row = mysql_fetch_row(rows.get());
    if (row == nullptr || mysql_num_fields(rows.get()) < 2 || row[1] == nullptr) {
        error.set_db_errmsg(connection, "fetch version row");
        return Server::kUnknown;
    }
    return hasPrefix(row[1], "3.") || hasPrefix(row[1], "4.0.") ? Server::kOld : Server::kCurrent;
}

void chooseCharacterSet(MYSQL* connection, ErrorBuffer& error) {
    const DbResult rows = ask(connection, "SELECT val FROM misc WHERE param='mysql41_compatible'",
                              "mysql41 compatible query", error);
    if (rows == nullptr) {
        return;
    }
    const MYSQL_ROW row = mysql_fetch_row(rows.get());
    const char* const value = row != nullptr && row[0] != nullptr ? row[0] : "";
    _mysql41_compatible = *value != '\0' && strcmp(value, "false") != 0 ? 1 : 0;
    const char* const query = _mysql41_compatible == 1 ? "SET NAMES utf8" : "SET NAMES binary";
    if (mysql_query(connection, query) != 0) {
        error.set_db_errmsg(connection, "set names query");
    }
}

void prepare(MYSQL* connection, ErrorBuffer& error) {
    mysql_query(connection, "set foreign_key_checks=0");
    switch (askVersion(connection, error)) {
        case Server::kOld:
            _mysql41_compatible = 0;
            break;
        case Server::kCurrent:
            chooseCharacterSet(connection, error);
            break;
        case Server::kUnknown:
            break;
    }
}

// A database that hangs must not hold up a restore for ever. The times are generous: a busy server
// answers late.
void setTimeouts(MYSQL* connection) {
    constexpr unsigned kConnectSeconds = 60;
    constexpr unsigned kAnswerSeconds = 600;
    mysql_options(connection, MYSQL_OPT_CONNECT_TIMEOUT, &kConnectSeconds);
    mysql_options(connection, MYSQL_OPT_READ_TIMEOUT, &kAnswerSeconds);
    mysql_options(connection, MYSQL_OPT_WRITE_TIMEOUT, &kAnswerSeconds);
}

bool readPassword(char* password, int size, ErrorBuffer& error) {
    switch (readPasswordLine(kAdminPasswordFile, password, size)) {
        case PasswordReading::kNotOpened:
            error.write("Unable to open admin password file: %s", strerror(errno));
            return false;
        case PasswordReading::kNotRead:
            error.write("Unable to read admin password file: %s", strerror(errno));
            return false;
        case PasswordReading::kDone:
            break;
    }
    return true;
}

}  // namespace

MYSQL* zelvo_db_connect_raw_ex(char* errorBuffer, std::size_t size) {
    ErrorBuffer error(errorBuffer, size);
    char password[100];
    if (!readPassword(password, sizeof(password), error)) {
        return nullptr;
    }
    DbConnection connection(mysql_init(nullptr));
    if (connection == nullptr) {
        error.write("Unable to initialize MySQL connection structure: %s", strerror(ENOMEM));
        return nullptr;
    }
    setTimeouts(connection.get());
    if (mysql_real_connect(connection.get(), "localhost", "admin", password, "qrd", 0, nullptr,
                           0) == nullptr) {
        error.write("Unable to connect to Zelvo Database: %s", mysql_error(connection.get()));
        return nullptr;
    }
    return connection.release();
}

MYSQL* zelvo_db_connect_ex(char* errorBuffer, std::size_t size) {
    MYSQL* const connection = zelvo_db_connect_raw_ex(errorBuffer, size);
    if (connection != nullptr) {
        ErrorBuffer error(errorBuffer, size);
        prepare(connection, error);
    }
    return connection;
}

MYSQL* zelvo_db_connect(char* errorBuffer, std::size_t size) {
    DbConnection connection(zelvo_db_connect_ex(errorBuffer, size));
    if (connection != nullptr && mysql_errno(connection.get()) != 0) {
        return nullptr;
    }
    return connection.release();
}

MYSQL* db_connect() {
    char reason[1024];
    MYSQL* const connection = zelvo_db_connect(reason, sizeof(reason));
    if (connection == nullptr) {
        reportDb(0, "%s", reason);
    }
    return connection;
}

MYSQL* db_connect_nothrow(char* buffer, std::size_t size) { return zelvo_db_connect(buffer, size); }

int db_is_mysql41_compatible() {
    if (_mysql41_compatible == -1) {
        const DbConnection connection(db_connect());
    }
    return _mysql41_compatible;
}

char* escape_mysql_param(MYSQL* connection, const char* text) {
    const std::size_t length = strlen(text);
    char* const escaped = static_cast<char*>(malloc_safe(2 * length + 1));
    mysql_real_escape_string(connection, escaped, text, length);
    return escaped;
}

std::string escaped(MYSQL* connection, const char* text) {
    const std::unique_ptr<char, decltype(&free)> owner(escape_mysql_param(connection, text), &free);
    return owner.get();
}

UsedConnection::UsedConnection(MYSQL* given)
    : own_(given == nullptr ? db_connect() : nullptr),
      used_(given == nullptr ? own_.get() : given) {
    if (used_ == nullptr) {
        reportDb(0, "Unable to connect to the mysql database\n");
    }
}
