// The utilities of clients and resellers.
#include "panel/command.h"
#include "panel/objects.h"
#include "words.h"

namespace sandbox {

namespace {

// One login is one account, whatever its kind.
Answer createAccount(Model& model, const Request& request) {
    if (request.name == kAdminName || findAccount(model, request.name)) {
        throw Refusal("an account " + quoteWord(request.name) + " exists already");
    }
    return createObject(model, request);
}

Answer convertToClient(Model& model, const Request& request) {
    model.setKind(requestedObject(model, request), "client");
    return {};
}

Answer convertToReseller(Model& model, const Request& request) {
    const Object account = requestedObject(model, request);
    model.setParent(account, model.at(Model::kAdmin));
    model.setKind(account, "reseller");
    return {};
}

Answer tellAccount(Model& model, const Request& request) {
    const Object account = requestedObject(model, request);
    return {0, "login=" + account.name + "\nowner=" + model.at(account.parent).name + "\n", ""};
}

constexpr Command kRows[] = {
    {"client", "--create", Shape::kName, "client", kOwner, createAccount},
    {"client", "--update", Shape::kName, "client", kOwner, updateObject},
    {"client", "--remove", Shape::kName, "client", kOwner, removeObject},
    {"client", "--info", Shape::kName, "client", kOwner, tellAccount},
    {"client", "--change-owner", Shape::kName, "client", kOwner, moveObject},
    {"client", "--convert-to-reseller", Shape::kName, "client", kOwner, convertToReseller},
    {"client_pref", "--update", Shape::kName, "client", kOwner, updateObject},
    {"reseller", "--create", Shape::kName, "reseller", kOwner, createAccount},
    {"reseller", "--update", Shape::kName, "reseller", kOwner, updateObject},
    {"reseller", "--remove", Shape::kName, "reseller", kOwner, removeObject},
    {"reseller", "--info", Shape::kName, "reseller", kOwner, tellAccount},
    {"reseller", "--change-owner", Shape::kName, "reseller", kOwner, moveObject},
    {"reseller", "--convert-to-client", Shape::kName, "reseller", kOwner, convertToClient},
    {"reseller_pref", "--update", Shape::kName, "reseller", kOwner, updateObject},
};

}  // namespace

Commands accountCommands() { return rowsOf(kRows); }

}  // namespace sandbox
