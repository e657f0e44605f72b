// The utilities of what stands in a domain's virtual host, and of the names that lead there.
#include "panel/hosting.h"

#include <string>
#include <string_view>

#include "panel/command.h"
#include "panel/objects.h"
#include "panel/request.h"
#include "panel/site_tree.h"
#include "panel/system_objects.h"
#include "words.h"

namespace sandbox {

namespace {

std::string valueOf(const Request& request, std::string_view option) {
    const std::string* value = request.option(option);
    return value != nullptr ? *value : "";
}

// ---- the virtual host ----------------------------------------------------

Object withHosting(Model& model, const Object& domain) {
    if (!directoryOf(model, domain)) {
        throw Refusal("domain " + quoteWord(domain.name) + " has no physical hosting");
    }
    return domain;
}

// Makes the account and the directory where they are missing.
void setHosting(Model& model, const Object& domain, const Request& request) {
    const std::string directory =
        directoryOf(model, domain).value_or(virtualHostDirectory(domain.name));
    if (!systemUserOf(model, domain)) {
        request.neededOption("login");
    }
    setSystemUser(model, domain, valueOf(request, "login"), valueOf(request, "shell"), directory);
    if (!directoryOf(model, domain)) {
        setDirectory(model, domain, directory, makeVirtualHost, systemUserOf(model, domain)->name);
    }
}

bool livesInHosting(const Object& object) {
    return object.kind == kSystemUser || object.kind == "subdomain" || object.kind == "webuser" ||
           object.kind == "protdir" || object.kind == "webapp";
}

void removeHosting(Model& model, const Object& domain) {
    for (const Object& child : model.children(domain)) {
        if (livesInHosting(child)) {
            eraseObject(model, child);
        }
    }
    removeDirectory(model, domain);
}

// Only a virtual host can hold what these utilities make.
Object hostedDomain(Model& model, const Request& request) {
    return withHosting(model, domainOption(model, request));
}

constexpr ParentRule kEachHost{"domain", hostedDomain};

// What is there already when it is to be made.
constexpr int kIsThere = 2;

Answer alreadyThere(const Request& request, const std::string& what) {
    return {kIsThere, "", std::string(request.command.utility) + ": " + what + " is there\n"};
}

// ---- subdomains and aliases ----------------------------------------------

// With an account of its own, or in that of its domain.
Answer createSubdomain(Model& model, const Request& request) {
    createObject(model, request);
    const Object subdomain = requestedObject(model, request);
    const Object domain = model.at(subdomain.parent);
    const std::string virtualHost = directoryOf(model, domain).value_or("");
    const std::string directory =
        virtualHost.empty() ? "" : subdomainDirectory(virtualHost, subdomain.name);
    const bool hasOwnUser = valueOf(request, "ftp_user") == "native";
    if (hasOwnUser) {
        setSystemUser(model, subdomain, request.neededOption("login"), valueOf(request, "shell"),
                      directory);
    }
    const auto owner = systemUserOf(model, hasOwnUser ? subdomain : domain);
    setDirectory(model, subdomain, directory, makeSubdomain, owner->name);
    return {};
}

// The name comes in an option.
Answer removeSubdomain(Model& model, const Request& request) {
    const std::string& name = request.neededOption("subdomains");
    const auto subdomain = model.find("subdomain", name, hostedDomain(model, request));
    if (!subdomain) {
        throw Refusal("subdomain " + quoteWord(name) + " does not exist");
    }
    eraseObject(model, *subdomain);
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
    if (model.find("protdir", request.name, hostedDomain(model, request))) {
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

// ---- web users and anonymous FTP -----------------------------------------

// A web user is an account of the system.
Answer createWebUser(Model& model, const Request& request) {
    createObject(model, request);
    const Object user = requestedObject(model, request);
    const std::string virtualHost = directoryOf(model, model.at(user.parent)).value_or("");
    const std::string home = virtualHost.empty() ? "" : webUserDirectory(virtualHost, user.name);
    setSystemUser(model, user, user.name, "", home);
    setDirectory(model, user, home, makeWebUser, user.name);
    return {};
}

Answer updateAnonymousFtp(Model& model, const Request& request) {
    withHosting(model, requestedObject(model, request));
    return updateObject(model, request);
}

constexpr ParentRule kDomain{"domain", domainOption, Unique::kOnPanel};

constexpr Command kRows[] = {
    {"anonftp", "--update", Shape::kName, "domain", kOwner, updateAnonymousFtp},
    {"subdomain", "--create", Shape::kName, "subdomain", kEachHost, createSubdomain},
    {"subdomain", "--update", Shape::kName, "subdomain", kEachHost, updateObject},
    {"subdomain", "--remove", Shape::kOptions, "subdomain", kEachHost, removeSubdomain},
    {"domalias", "--create", Shape::kName, "domalias", kDomain, createAlias},
    {"domalias", "--update", Shape::kName, "domalias", kDomain, updateObject},
    {"domalias", "--delete", Shape::kName, "domalias", kDomain, removeObject},
    {"protdir", "--create", Shape::kName, "protdir", kEachHost, createProtectedDirectory},
    {"protdir", "--update", Shape::kName, "protdir", kEachHost, updateProtectedDirectory},
    {"webuser", "--create", Shape::kName, "webuser", kEachHost, createWebUser},
    {"webuser", "--update", Shape::kName, "webuser", kEachHost, updateObject},
    {"webuser", "--delete", Shape::kName, "webuser", kEachHost, removeObject},
};

}  // namespace

Commands hostingCommands() { return rowsOf(kRows); }

void applyHosting(Model& model, const Object& domain, const Request& request) {
    if (const std::string* hosting = request.option("hosting")) {
        const std::string type = valueOf(request, "hst_type");
        if (*hosting == "true" && (type.empty() || type == "phys")) {
            setHosting(model, domain, request);
        } else {
            removeHosting(model, domain);
        }
    } else if (request.option("login") != nullptr || request.option("shell") != nullptr) {
        setHosting(model, withHosting(model, domain), request);
    }
}

void makeTemplateHosting(Model& model, const Object& domain, const Object& used,
                         const Request& request) {
    const bool isPhysical = model.option(used, "domain_template", "hosting") == "true";
    if (isPhysical && request.option("login") != nullptr) {
        setHosting(model, domain, request);
    }
}

}  // namespace sandbox
