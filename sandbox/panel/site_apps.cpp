// The utilities of site applications: the packages and items that the server has, the pools of the
// accounts, and what is installed on domains.
#include <algorithm>
#include <string>
#include <string_view>

#include "files.h"
#include "panel/command.h"
#include "panel/given_file.h"
#include "panel/objects.h"
#include "panel/system_users.h"
#include "words.h"
#include "xml_text.h"

namespace sandbox {

namespace {

// Of what the server has, and of what an account was given; named "NAME VERSION".
constexpr char kPackage[] = "sapp-package";
constexpr char kItem[] = "sapp-item";
constexpr char kInPool[] = "sapp-in-pool";
constexpr char kInstalled[] = "siteapp";

Object server(Model& model) { return model.at(Model::kServer); }

Object needed(Model& model, const char* kind, const std::string& spec, const Object& parent) {
    if (const auto found = model.find(kind, spec, parent)) {
        return *found;
    }
    throw Refusal(std::string(kind) + " " + quoteWord(spec) + " does not exist");
}

Object insertNew(Model& model, const char* kind, const std::string& spec, const Object& parent) {
    if (model.find(kind, spec, parent)) {
        throw Refusal(std::string(kind) + " " + quoteWord(spec) + " exists already");
    }
    return model.insert(kind, spec, parent);
}

// "<ROOT><CHILD><PREFIXname>...": all that the server has of the kind.
Answer list(Model& model, const char* kind, const std::string& root, const std::string& child,
            const std::string& prefix) {
    const auto element = [&](const char* name, std::string_view text) {
        const std::string tag = prefix + name;
        return "<" + tag + ">" + xmlText(text) + "</" + tag + ">";
    };
    std::string out = "<?xml version=\"1.0\"?>\n<" + root + ">";
    for (const Object& object : model.all(kind)) {
        const std::string_view spec = object.name;
        const std::size_t blank = spec.rfind(' ');
        out += "<" + child + ">" + element("name", spec.substr(0, blank)) +
               element("version", spec.substr(blank + 1)) + "</" + child + ">";
    }
    return {0, out + "</" + root + ">\n", ""};
}

// ---- packages ------------------------------------------------------------

Answer listPackages(Model& model, const Request&) {
    return list(model, kPackage, "packages", "package", "");
}

Answer noPackages() { return {0, "<packages/>\n", ""}; }

// A package is a line "NAME VERSION"; one that brings an item along has " item" behind it.
Answer installPackage(Model& model, const Request& request) {
    std::string spec = readGiven(request.neededOption("file"));
    spec.erase(spec.find_last_not_of('\n') + 1);
    const std::string_view mark = " item";
    if (spec.ends_with(mark)) {
        spec.erase(spec.size() - mark.size());
        insertNew(model, kItem, spec, server(model));
    }
    if (std::count(spec.begin(), spec.end(), ' ') != 1) {
        throw Refusal("no package: " + quoteWord(spec));
    }
    insertNew(model, kPackage, spec, server(model));
    return {};
}

// For set-ups: a package without a file.
Answer registerPackage(Model& model, const Request& request) {
    insertNew(model, kPackage, request.name + " " + request.neededOption("version"), server(model));
    return {};
}

// ---- items and pools -----------------------------------------------------

std::string specOf(const Request& request) {
    return request.neededOption("sapp-name") + " " + request.neededOption("sapp-version");
}

Answer listItems(Model& model, const Request&) {
    return list(model, kItem, "sapp-items", "sapp-item", "sapp-");
}

Answer noItems() { return {0, "<sapp-items/>\n", ""}; }

Answer createItem(Model& model, const Request& request) {
    const std::string spec = specOf(request);
    needed(model, kPackage, spec, server(model));
    storeOptions(model, insertNew(model, kItem, spec, server(model)), request);
    return {};
}

Answer removeItem(Model& model, const Request& request) {
    model.erase(needed(model, kItem, specOf(request), server(model)));
    return {};
}

// What is in the pool already stays there, with the new limit.
Answer addToPool(Model& model, const Request& request) {
    const std::string spec = specOf(request);
    needed(model, kItem, spec, server(model));
    const Object account =
        request.name == kAdminName ? model.at(Model::kAdmin) : existingAccount(model, request.name);
    const auto known = model.find(kInPool, spec, account);
    storeOptions(model, known ? *known : model.insert(kInPool, spec, account), request);
    return {};
}

// ---- installed applications ----------------------------------------------

// The text of the first element of this name, as it is written; empty for none.
std::string textOf(const std::string& document, const std::string& name) {
    const std::string begin = "<" + name + ">";
    const std::size_t from = document.find(begin);
    const std::size_t to = document.find("</" + name + ">");
    return from == std::string::npos || to == std::string::npos
               ? ""
               : document.substr(from + begin.size(), to - from - begin.size());
}

Object placeOf(Model& model, const Request& request) {
    const std::string* const name = request.option("subdomain");
    if (name == nullptr) {
        return domainOption(model, request);
    }
    for (const Object& subdomain : model.all("subdomain")) {
        if (subdomain.name + "." + model.at(subdomain.parent).name == *name) {
            return subdomain;
        }
    }
    throw Refusal("subdomain " + quoteWord(*name) + " does not exist");
}

Object accountOf(Model& model, const Object& place) {
    return model.at(place.kind == "subdomain" ? model.at(place.parent).parent : place.parent);
}

// Numbers, or pairs of them, separated by commas.
void checkNumbers(const Request& request, std::string_view option, std::size_t colons) {
    const std::string* const value = request.option(option);
    if (value == nullptr) {
        return;
    }
    for (const std::string_view entry : splitText(*value, ',')) {
        const auto parts = splitText(entry, ':');
        const bool isNumbers = std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
            return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
        });
        if (parts.size() != colons + 1 || !isNumbers) {
            throw Refusal("no list for -" + std::string(option) + ": " + quoteWord(*value));
        }
    }
}

Answer applicationId(const std::string& id) {
    return {0, "<?xml version=\"1.0\"?>\n<site-app-id>" + id + "</site-app-id>\n", ""};
}

Answer someApplicationId() { return applicationId("1"); }

// "--register FILE": the file is the element of the application, passwords included.
Answer registerApplication(Model& model, const Request& request) {
    const std::string document = readSecret(request.name);
    if (!document.starts_with("<sapp-installed")) {
        throw Refusal("no site application: " + quoteWord(document));
    }
    checkNumbers(request, "linked-dbs", 0);
    checkNumbers(request, "linked-dbus", 1);
    checkNumbers(request, "linked-cbs", 0);
    const Object place = placeOf(model, request);
    const std::string spec = textOf(document, "sapp-name") + " " + textOf(document, "sapp-version");
    needed(model, kInPool, spec, accountOf(model, place));
    const Object application =
        model.insert(kInstalled, std::to_string(nextNumber(model, kInstalled)), place);
    storeOptions(model, application, request);
    model.setOption(application, {kInstalled, "package", spec});
    return request.option("print-id") != nullptr ? applicationId(application.name) : Answer{};
}

// ---- the after-work on their files ---------------------------------------

Answer fixUp(Model& model, const Request& request) {
    model.setOption(requestedObject(model, request), {kInstalled, "fixed-up", "true"});
    return {};
}

// The value of the argument "--NAME=VALUE".
std::string argumentOf(const Call& call, const std::string& name) {
    const std::string begin = "--" + name + "=";
    for (const std::string& argument : call.arguments) {
        if (argument.starts_with(begin)) {
            return argument.substr(begin.size());
        }
    }
    throw Refusal(begin + " is needed");
}

Answer updatePermissions(Model&, const Request& request) {
    argumentOf(request.call, "application-full-name");
    argumentOf(request.call, "application-subdirectory");
    if (!fileExists(argumentOf(request.call, "vhost-path"))) {
        throw Refusal("there is no such virtual host");
    }
    if (!systemUserId(argumentOf(request.call, "user-name"))) {
        throw Refusal("there is no such account");
    }
    return {};
}

constexpr Command kRows[] = {
    {"siteapp", "--info-packages-xml", Shape::kOptions, "", kServer, listPackages, noPackages},
    {"siteapp", "--install-on-server", Shape::kOptions, "", kServer, installPackage},
    {"siteapp", "--register", Shape::kName, "", kServer, registerPackage},
    {"siteapp-item", "--list", Shape::kOptions, "", kServer, listItems, noItems},
    {"siteapp-item", "--create", Shape::kOptions, "", kServer, createItem},
    {"siteapp-item", "--remove", Shape::kOptions, "", kServer, removeItem},
    {"siteapp-item", "--add-to-pool", Shape::kName, "", kServer, addToPool},
    {"siteapp-registrar", "--register", Shape::kName, "", kServer, registerApplication,
     someApplicationId, "print-id"},
    {"siteapp-registrar", "--fixup", Shape::kName, kInstalled,
     ParentRule{"", theServer, Unique::kOnPanel}, fixUp},
    {"sappmng", "--update-application-permissions", Shape::kWords, "", kServer, updatePermissions},
};

}  // namespace

Commands siteAppCommands() { return rowsOf(kRows); }

}  // namespace sandbox
