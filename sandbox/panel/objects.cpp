#include "panel/objects.h"

#include <algorithm>

#include "panel/system_objects.h"
#include "words.h"

namespace sandbox {

namespace {

std::string quotedName(std::string_view kind, const std::string& name) {
    return std::string(kind) + " " + quoteWord(name);
}

// The object of the row's kind and the request's name. The parent is asked for only where it tells
// objects of one name apart.
std::optional<Object> findNamed(Model& model, const Request& request) {
    const Command& command = request.command;
    return command.parent.unique == Unique::kOnPanel
               ? model.find(command.kind, request.name)
               : model.find(command.kind, request.name, command.parent.find(model, request));
}

void setGuid(Model& model, const Object& object, const std::string& guid) {
    const auto holder = model.findGuid(guid);
    if (holder && holder->id != object.id) {
        throw Refusal("guid " + quoteWord(guid) + " belongs to " +
                      quotedName(holder->kind, holder->name));
    }
    model.setGuid(object, guid);
}

}  // namespace

// ---- finding -------------------------------------------------------------

Object existing(Model& model, std::string_view kind, const std::string& name) {
    if (auto object = model.find(kind, name)) {
        return *object;
    }
    throw Refusal(quotedName(kind, name) + " does not exist");
}

std::optional<Object> findAccount(Model& model, const std::string& login) {
    if (auto client = model.find("client", login)) {
        return client;
    }
    return model.find("reseller", login);
}

Object existingAccount(Model& model, const std::string& login) {
    if (auto account = findAccount(model, login)) {
        return *account;
    }
    throw Refusal("account " + quoteWord(login) + " does not exist");
}

Object requestedObject(Model& model, const Request& request) {
    const Command& command = request.command;
    if (command.shape == Shape::kOptions) {
        return command.parent.find(model, request);
    }
    if (auto object = findNamed(model, request)) {
        return *object;
    }
    throw Refusal(quotedName(command.kind, request.name) + " does not exist");
}

Object ownerFor(Model& model, std::string_view kind, const std::string& login) {
    if (login == kAdminName) {
        return model.at(Model::kAdmin);
    }
    const auto account = findAccount(model, login);
    if (!account) {
        throw Refusal("owner " + quoteWord(login) + " does not exist");
    }
    if (kind == "reseller") {
        throw Refusal("a reseller belongs to admin only");
    }
    if (kind == "client" && account->kind == "client") {
        throw Refusal("client " + quoteWord(login) + " cannot own clients");
    }
    return *account;
}

// ---- parent rules --------------------------------------------------------

Object theServer(Model& model, const Request&) { return model.at(Model::kServer); }

Object theAdmin(Model& model, const Request&) { return model.at(Model::kAdmin); }

Object ownerOption(Model& model, const Request& request) {
    const std::string* login = request.option("owner");
    return ownerFor(model, request.command.kind, login != nullptr ? *login : kAdminName);
}

Object domainOption(Model& model, const Request& request) {
    return existing(model, "domain", request.neededOption("domain"));
}

// ---- numbers -------------------------------------------------------------

long nextNumber(Model& model, std::string_view utility) {
    const Object server = model.at(Model::kServer);
    const long next = std::stol(model.option(server, utility, "last").value_or("0")) + 1;
    model.setOption(server, {std::string(utility), "last", std::to_string(next)});
    return next;
}

// ---- commands ------------------------------------------------------------

void storeOptions(Model& model, const Object& object, const Request& request) {
    const Command& command = request.command;
    for (const auto& [name, value] : request.options) {
        const Option option{std::string(command.utility), name, value};
        if (name == command.parent.option) {
            continue;
        }
        if (name == "guid") {
            setGuid(model, object, value);
        } else if (holdsWord(command.lists, name)) {
            model.addOption(object, option);
        } else {
            model.setOption(object, option);
        }
    }
}

Answer createObject(Model& model, const Request& request) {
    const Command& command = request.command;
    if (findNamed(model, request)) {
        throw Refusal(quotedName(command.kind, request.name) + " exists already");
    }
    const Object parent = command.parent.find(model, request);
    storeOptions(model, model.insert(command.kind, request.name, parent), request);
    return {};
}

Answer updateObject(Model& model, const Request& request) {
    storeOptions(model, requestedObject(model, request), request);
    return {};
}

Answer removeObject(Model& model, const Request& request) {
    eraseObject(model, requestedObject(model, request));
    return {};
}

Answer moveObject(Model& model, const Request& request) {
    const Object object = requestedObject(model, request);
    request.neededOption(request.command.parent.option);
    model.setParent(object, request.command.parent.find(model, request));
    return {};
}

Answer succeed(Model&, const Request&) { return {}; }

// ---- lists ---------------------------------------------------------------

void checkChanges(const Request& request, std::string_view option, std::string_view words) {
    for (const auto& [name, value] : request.options) {
        if (name != option) {
            continue;
        }
        for (const std::string_view change : splitText(value, ';')) {
            const std::size_t colon = change.find(':');
            const auto items =
                splitText(change.substr(std::min(colon, change.size() - 1) + 1), ',');
            if (colon == std::string_view::npos || !holdsWord(words, change.substr(0, colon)) ||
                std::find(items.begin(), items.end(), "") != items.end()) {
                throw Refusal("no change of a list: " + quoteWord(change));
            }
        }
    }
}

}  // namespace sandbox
