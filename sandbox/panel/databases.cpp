// The utilities of databases, their users and the servers that they are on.
#include <string>
#include <string_view>

#include "panel/command.h"
#include "panel/objects.h"
#include "panel/system_objects.h"
#include "words.h"
#include "xml_text.h"

namespace sandbox {

namespace {

constexpr ParentRule kDomain{"domain", domainOption, Unique::kOnPanel};

void checkType(const std::string& type) {
    if (type != "mysql" && type != "postgresql" && type != "mssql") {
        throw Refusal("unknown type " + quoteWord(type));
    }
}

// ---- databases -----------------------------------------------------------

Answer databaseId(long id) {
    return {0, "<?xml version=\"1.0\"?>\n<database-id>" + std::to_string(id) + "</database-id>\n",
            ""};
}

Answer someDatabaseId() { return databaseId(1); }

Answer createDatabase(Model& model, const Request& request) {
    checkType(request.neededOption("type"));
    createObject(model, request);
    const long id = nextNumber(model, "database");
    return request.option("print-id") != nullptr ? databaseId(id) : Answer{};
}

// ---- users ---------------------------------------------------------------

Answer userId(long id) { return {0, "New database user ID = " + std::to_string(id) + "\n", ""}; }

// Of a panel without a memory, which says it to whatever is done with a database.
Answer someUserId() { return userId(1); }

Answer addUser(Model& model, const Request& request, const Object& database,
               const std::string& login) {
    const std::string& type = request.neededOption("type");
    if (type != model.option(database, "database", "type")) {
        throw Refusal("database " + quoteWord(database.name) + " is not of type " +
                      quoteWord(type));
    }
    if (model.find("dbuser", login, database)) {
        throw Refusal("dbuser " + quoteWord(login) + " exists already");
    }
    const Object user = model.insert("dbuser", login, database);
    model.setOption(user, {"database", "passwd", request.neededOption("passwd")});
    const long id = nextNumber(model, "dbuser");
    return request.option("print-id") != nullptr ? userId(id) : Answer{};
}

Object userOf(Model& model, const Object& database, const std::string& login) {
    if (const auto user = model.find("dbuser", login, database)) {
        return *user;
    }
    throw Refusal("dbuser " + quoteWord(login) + " does not exist");
}

// Users are options of their database. One call is for one of them.
Answer updateDatabase(Model& model, const Request& request) {
    const Object database = requestedObject(model, request);
    if (const std::string* login = request.option("add_user")) {
        return addUser(model, request, database, *login);
    }
    if (const std::string* login = request.option("remove_user")) {
        model.erase(userOf(model, database, *login));
    } else if (const std::string* known = request.option("update_user")) {
        model.addOption(userOf(model, database, *known),
                        {"database", "access", request.neededOption("add-access")});
    } else {
        storeOptions(model, database, request);
    }
    return {};
}

// ---- servers -------------------------------------------------------------

const std::string& typeOption(const Request& request) {
    const std::string& type = request.neededOption("type");
    checkType(type);
    return type;
}

// The server is "HOST" or "HOST:PORT".
Answer serverDocument(const std::string& type, const std::string& server) {
    const std::size_t colon = server.rfind(':');
    const std::string port = colon == std::string::npos ? "" : server.substr(colon + 1);
    return {0,
            "<?xml version=\"1.0\"?>\n<db-server type=\"" + type + "\"><host>" +
                xmlText(server.substr(0, colon)) + "</host>" +
                (port.empty() ? "" : "<port>" + xmlText(port) + "</port>") + "</db-server>\n",
            ""};
}

Answer someServer() { return serverDocument("mysql", "localhost"); }

std::string defaultOf(const std::string& type) { return "default-" + type; }

Answer showDefaultServer(Model& model, const Request& request) {
    const std::string& type = typeOption(request);
    return serverDocument(type,
                          model.option(requestedObject(model, request), kSystem, defaultOf(type))
                              .value_or("localhost"));
}

// Of type and name; its administrator's password is known unless it came encrypted.
void keepServer(Model& model, const Request& request, const std::string& login) {
    const std::string name = typeOption(request) + " " + request.name;
    const Object root = theServer(model, request);
    if (model.find("dbserver", name, root)) {
        throw Refusal("dbserver " + quoteWord(name) + " exists already");
    }
    const Object server = model.insert("dbserver", name, root);
    model.setOption(server, {kSystem, "login", login});
    if (const std::string* password = request.call.env("QRD_PASSWORD")) {
        model.setOption(server, {kSystem, "password", *password});
    }
}

Answer createServer(Model& model, const Request& request) {
    request.neededOption("passwd");
    keepServer(model, request, request.neededOption("admin"));
    return {};
}

// For set-ups: a server whose administrator is known, and which is its type's default from then on.
Answer registerServer(Model& model, const Request& request) {
    if (request.call.env("QRD_PASSWORD") == nullptr) {
        throw Refusal("--register needs QRD_PASSWORD");
    }
    keepServer(model, request, request.neededOption("login"));
    model.setOption(theServer(model, request),
                    {kSystem, defaultOf(typeOption(request)), request.name});
    return {};
}

Answer credentials(const std::string& inside) {
    return {0, "<?xml version=\"1.0\"?>\n<credentials>" + inside + "</credentials>\n", ""};
}

Answer showCredentials(Model& model, const Request& request) {
    const auto server = model.find("dbserver", typeOption(request) + " " + request.name);
    if (!server) {
        return credentials("<not-configured/>");
    }
    const auto value = [&](const char* name) {
        return xmlText(model.option(*server, kSystem, name).value_or(""));
    };
    return credentials("<username>" + value("login") + "</username><password>" + value("password") +
                       "</password>");
}

Answer noCredentials() { return credentials("<not-configured/>"); }

constexpr Command kRows[] = {
    {"database", "--create", Shape::kName, "database", kDomain, createDatabase, someDatabaseId,
     "print-id"},
    {"database", "--update", Shape::kName, "database", kDomain, updateDatabase, someUserId,
     "print-id"},
    {"database-registrar", "--get-default-server", Shape::kOptions, "", kServer, showDefaultServer,
     someServer},
    {"database-registrar", "--get-credentials", Shape::kName, "", kServer, showCredentials,
     noCredentials},
    {"database-registrar", "--register", Shape::kName, "", kServer, registerServer},
    {"database-server", "--create-server", Shape::kName, "", kServer, createServer},
};

}  // namespace

Commands databaseCommands() { return rowsOf(kRows); }

}  // namespace sandbox
