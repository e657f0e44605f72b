// The utilities of what stands in a domain's virtual host, and of the names that lead there.
#include "panel/command.h"
#include "panel/objects.h"
#include "words.h"

namespace sandbox {

namespace {

// What is there already when it is to be made.
constexpr int kIsThere = 2;

Answer alreadyThere(const Request& request, const std::string& what) {
    return {kIsThere, "", std::string(request.command.utility) + ": " + what + " is there\n"};
}

// ---- subdomains and aliases ----------------------------------------------

// The name comes in an option.
Answer removeSubdomain(Model& model, const Request& request) {
    const std::string& name = request.neededOption("subdomains");
    const auto subdomain = model.find("subdomain", name, domainOption(model, request));
    if (!subdomain) {
        throw Refusal("subdomain " + quoteWord(name) + " does not exist");
    }
    model.erase(*subdomain);
    return {};
}

// A name leads to one domain.
Answer createAlias(Model& model, const Request& request) {
    if (model.find("domain", request.name)) {
        throw Refusal("a domain " + quoteWord(request.name) + " exists already");
    }
    return createObject(model, request);
}

// ---- protected directories -----------------------------------------------

Answer createProtectedDirectory(Model& model, const Request& request) {
    if (model.find("protdir", request.name, domainOption(model, request))) {
        return alreadyThere(request, "protdir " + quoteWord(request.name));
    }
    return createObject(model, request);
}

Answer addDirectoryUser(Model& model, const Request& request, const std::string& user) {
    const Object directory = requestedObject(model, request);
    if (model.find("pduser", user, directory)) {
        return alreadyThere(request, "pduser " + quoteWord(user));
    }
    const Object added = model.insert("pduser", user, directory);
    if (const std::string* password = request.option("passwd")) {
        model.setOption(added, {"protdir", "passwd", *password});
    }
    return {};
}

Answer updateProtectedDirectory(Model& model, const Request& request) {
    const std::string* user = request.option("add_user");
    return user != nullptr ? addDirectoryUser(model, request, *user) : updateObject(model, request);
}

constexpr ParentRule kDomain{"domain", domainOption, Unique::kOnPanel};

constexpr Command kRows[] = {
    {"anonftp", "--update", Shape::kName, "domain", kOwner, updateObject},
    {"subdomain", "--create", Shape::kName, "subdomain", kEachDomain, createObject},
    {"subdomain", "--update", Shape::kName, "subdomain", kEachDomain, updateObject},
    {"subdomain", "--remove", Shape::kOptions, "subdomain", kEachDomain, removeSubdomain},
    {"domalias", "--create", Shape::kName, "domalias", kDomain, createAlias},
    {"domalias", "--update", Shape::kName, "domalias", kDomain, updateObject},
    {"domalias", "--delete", Shape::kName, "domalias", kDomain, removeObject},
    {"protdir", "--create", Shape::kName, "protdir", kEachDomain, createProtectedDirectory},
    {"protdir", "--update", Shape::kName, "protdir", kEachDomain, updateProtectedDirectory},
    {"webuser", "--create", Shape::kName, "webuser", kEachDomain, createObject},
    {"webuser", "--update", Shape::kName, "webuser", kEachDomain, updateObject},
    {"webuser", "--delete", Shape::kName, "webuser", kEachDomain, removeObject},
};

}  // namespace

Commands hostingCommands() { return rowsOf(kRows); }

}  // namespace sandbox
