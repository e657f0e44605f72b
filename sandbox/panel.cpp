#include "panel.h"

#include "files.h"
#include "model.h"
#include "paths.h"
#include "request.h"
#include "words.h"
#include "xml_text.h"

#include <algorithm>
#include <array>

namespace sandbox {
namespace {

constexpr char kAdmin[] = "admin";

// ---- finding -------------------------------------------------------------

std::optional<Object> findAccount(Model& model, const std::string& name) {
    if (auto client = model.find("client", name)) return client;
    return model.find("reseller", name);
}

Object existing(Model& model, const std::string& kind, const std::string& name) {
    if (auto object = model.find(kind, name)) return *object;
    throw Refusal(kind + " " + quoteWord(name) + " does not exist");
}

Object adminOf(Model& model) { return existing(model, kAdmin, kAdmin); }

// "reseller_pref" works on resellers, and so on.
std::string accountKind(const Request& request) {
    return request.call.utility.starts_with("reseller") ? "reseller" : "client";
}

Object existingAccount(Model& model, const Request& request) {
    return existing(model, accountKind(request), request.name);
}

// ---- owners and guids ----------------------------------------------------

// Clients belong to resellers or to the administrator, resellers to the
// administrator alone, domains to any account.
void checkOwner(Model& model, const std::string& kind, const std::string& owner) {
    if (owner == kAdmin) return;
    const auto account = findAccount(model, owner);
    if (!account) throw Refusal("owner " + quoteWord(owner) + " does not exist");
    if (kind == "reseller") throw Refusal("a reseller belongs to admin only");
    if (kind == "client" && account->kind == "client") {
        throw Refusal("client " + quoteWord(owner) + " cannot own clients");
    }
}

std::string ownerOption(Model& model, const Request& request, const std::string& kind) {
    const std::string* owner = request.option("owner");
    if (owner == nullptr) return kAdmin;
    checkOwner(model, kind, *owner);
    return *owner;
}

void checkGuid(Model& model, const Object& object, const std::string& guid) {
    const auto holder = model.findGuid(guid);
    if (holder && (holder->kind != object.kind || holder->name != object.name)) {
        throw Refusal("guid " + quoteWord(guid) + " belongs to " + holder->kind + " " +
                      quoteWord(holder->name));
    }
}

void storeOptions(Model& model, const Object& object, const Request& request) {
    for (const auto& [name, value] : request.options) {
        if (name == "owner") continue;
        if (name == "guid") {
            checkGuid(model, object, value);
            model.setGuid(object, value);
        } else {
            model.setOption(object, {request.call.utility, name, value});
        }
    }
}

// ---- the common commands -------------------------------------------------

Answer create(Model& model, const Request& request, const std::string& kind) {
    const Object object{kind, request.name, ownerOption(model, request, kind), ""};
    model.insert(object);
    storeOptions(model, object, request);
    return {};
}

Answer changeOwner(Model& model, const Request& request, const Object& object) {
    if (request.option("owner") == nullptr) throw Refusal("--change-owner needs -owner");
    model.setOwner(object, ownerOption(model, request, object.kind));
    return {};
}

// ---- accounts ------------------------------------------------------------

Answer createAccount(Model& model, const Request& request) {
    if (request.name == kAdmin || findAccount(model, request.name)) {
        throw Refusal("an account " + quoteWord(request.name) + " exists already");
    }
    return create(model, request, accountKind(request));
}

Answer updateAccount(Model& model, const Request& request) {
    storeOptions(model, existingAccount(model, request), request);
    return {};
}

void removeWithAllBelow(Model& model, const Object& object) {
    if (object.kind == "client" || object.kind == "reseller") {
        for (const Object& below : model.ownedBy(object.name)) removeWithAllBelow(model, below);
    }
    model.erase(object);
}

Answer removeAccount(Model& model, const Request& request) {
    removeWithAllBelow(model, existingAccount(model, request));
    return {};
}

Answer changeAccountOwner(Model& model, const Request& request) {
    return changeOwner(model, request, existingAccount(model, request));
}

Answer convertToClient(Model& model, const Request& request) {
    model.setKind(existing(model, "reseller", request.name), "client");
    return {};
}

Answer convertToReseller(Model& model, const Request& request) {
    const Object account = existing(model, "client", request.name);
    model.setOwner(account, kAdmin);
    model.setKind(account, "reseller");
    return {};
}

Answer infoAccount(Model& model, const Request& request) {
    const Object account = existingAccount(model, request);
    return {0, "login=" + account.name + "\nowner=" + account.owner + "\n", ""};
}

Answer addToIpPool(Model& model, const Request& request) {
    existing(model, "ip", request.name);
    const std::string* owner = request.option("owner");
    const std::string* type = request.option("type");
    if (owner == nullptr || type == nullptr) throw Refusal("--add needs -type and -owner");
    const auto account = findAccount(model, *owner);
    if (!account) throw Refusal("account " + quoteWord(*owner) + " does not exist");
    model.setOption(*account, {"ip_pool", request.name, *type});
    return {};
}

// ---- domains -------------------------------------------------------------

Answer createDomain(Model& model, const Request& request) {
    if (model.find("domain", request.name)) {
        throw Refusal("domain " + quoteWord(request.name) + " exists already");
    }
    if (const std::string* used = request.option("template")) {
        existing(model, "domain_template", *used);
    }
    return create(model, request, "domain");
}

Answer updateDomain(Model& model, const Request& request) {
    storeOptions(model, existing(model, "domain", request.name), request);
    return {};
}

Answer removeDomain(Model& model, const Request& request) {
    model.erase(existing(model, "domain", request.name));
    return {};
}

Answer changeDomainOwner(Model& model, const Request& request) {
    return changeOwner(model, request, existing(model, "domain", request.name));
}

Answer infoDomain(Model& model, const Request& request) {
    const Object domain = existing(model, "domain", request.name);
    return {0, "name=" + domain.name + "\nowner=" + domain.owner + "\n", ""};
}

// The domain that answers for an address when no other name fits.
Answer makeDefaultDomain(Model& model, const Request& request) {
    const Object domain = existing(model, "domain", request.name);
    model.setOption(domain, {"domain_pref", "default-domain", "true"});
    if (const auto address = model.option("domain", domain.name, "domain", "ip")) {
        model.setOption(existing(model, "ip", *address),
                        {"ipmanage", "default-domain", domain.name});
    }
    return {};
}

std::string shellList() {
    if (const auto own = readFile(stateFile(kShellsFile))) return *own;
    return "/bin/sh\n/bin/bash\n/bin/false\n" + std::string(kProductRoot) + "/bin/chrootsh\n";
}

Answer listShells(Model&, const Request&) { return {0, shellList(), ""}; }

// "SuspendHandlerRunner.php suspend|unsuspend DOMAIN SESSION", which a script
// of the panel gets from its interpreter.
Answer runSuspendHandler(Model& model, const Call& call) {
    if (call.arguments.size() != 4) throw Refusal("a script and three arguments are needed");
    const std::string& word = call.arguments[1];
    if (word != "suspend" && word != "unsuspend") throw Refusal("unknown word " + quoteWord(word));
    const Object domain = existing(model, "domain", call.arguments[2]);
    model.setOption(domain, {call.utility, "suspended", word == "suspend" ? "true" : "false"});
    return {};
}

// ---- traffic -------------------------------------------------------------

Answer addTraffic(Model& model, const Object& object, const std::string& rows) {
    std::string_view rest = rows;
    while (!rest.empty()) {
        const std::string_view row = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(row.size() + 1, rest.size()));
        if (row.find_first_not_of(" \t\r") != std::string_view::npos)
            model.addTrafficRow(object, row);
    }
    return {};
}

Answer addDomainTraffic(Model& model, const Request& request) {
    return addTraffic(model, existing(model, "domain", request.name), request.call.input);
}

Answer addUserTraffic(Model& model, const Request& request) {
    const auto account = findAccount(model, request.name);
    if (!account) throw Refusal("account " + quoteWord(request.name) + " does not exist");
    return addTraffic(model, *account, request.call.input);
}

// ---- templates -----------------------------------------------------------

// Two owners may have a template of the same name.
std::string templateKey(Model& model, const Request& request) {
    const std::string owner = ownerOption(model, request, "template");
    return owner == kAdmin ? request.name : owner + "/" + request.name;
}

Answer createTemplate(Model& model, const Request& request) {
    const Object object{request.call.utility, templateKey(model, request),
                        ownerOption(model, request, "template"), ""};
    if (model.find(object.kind, object.name)) {
        throw Refusal(object.kind + " " + quoteWord(request.name) + " exists already");
    }
    model.insert(object);
    storeOptions(model, object, request);
    return {};
}

std::string templateItem(const std::string& name, const std::string& value) {
    return "  <template-item name=\"" + xmlText(name) + "\">" + xmlText(value) +
           "</template-item>\n";
}

Answer showTemplate(Model& model, const Request& request) {
    const Object object = existing(model, request.call.utility, templateKey(model, request));
    std::string root = object.kind;
    std::replace(root.begin(), root.end(), '_', '-');
    std::string out = "<" + root + " name=\"" + xmlText(request.name) + "\">\n";
    for (const Option& option : model.options(object)) {
        // The item tells the kind of hosting, the option only whether there is one.
        out += option.name == "hosting"
                   ? templateItem("vh_type", option.value == "true" ? "physical" : "none")
                   : templateItem(option.name, option.value);
    }
    return {0, out + "</" + root + ">\n", ""};
}

// ---- the server ----------------------------------------------------------

Answer updateAdmin(Model& model, const Request& request) {
    storeOptions(model, adminOf(model), request);
    return {};
}

std::string adminDocument(const std::string& country, const std::string& state,
                          const std::string& zip) {
    return "<admin><country>" + xmlText(country) + "</country><state>" + xmlText(state) +
           "</state><zip>" + xmlText(zip) + "</zip></admin>\n";
}

Answer showAdmin(Model& model, const Request&) {
    const auto value = [&](const char* name) {
        return model.option(kAdmin, kAdmin, "admin", name).value_or("");
    };
    return {0, adminDocument(value("country"), value("state"), value("zip")), ""};
}

Answer addIp(Model& model, const Request& request) {
    if (model.find("ip", request.name)) {
        throw Refusal("address " + quoteWord(request.name) + " exists already");
    }
    const Object ip{"ip", request.name, "", ""};
    model.insert(ip);
    storeOptions(model, ip, request);
    return {};
}

Answer updateIp(Model& model, const Request& request) {
    storeOptions(model, existing(model, "ip", request.name), request);
    return {};
}

std::string ipElement(const std::string& address, const std::string& type,
                      const std::string& defaultDomain) {
    std::string out = "  <ip name=\"" + xmlText(address) + "\"><type>" + xmlText(type) + "</type>";
    if (!defaultDomain.empty()) out += "<def_domain>" + xmlText(defaultDomain) + "</def_domain>";
    return out + "</ip>\n";
}

Answer showIps(Model& model, const Request&) {
    std::string out = "<ipinfo>\n";
    for (const Object& ip : model.all("ip")) {
        const auto value = [&](const char* name) {
            return model.option("ip", ip.name, "ipmanage", name);
        };
        out += ipElement(ip.name, value("type").value_or("shared"),
                         value("default-domain").value_or(""));
    }
    return {0, out + "</ipinfo>\n", ""};
}

// A panel is configured unless it was told to forget that.
Answer checkConfigured(Model& model, const Request&) {
    const auto value = model.option(kAdmin, kAdmin, "init_conf", "configured");
    return {value.value_or("true") == "true" ? 0 : 1, "", ""};
}

Answer configure(Model& model, const Request& request) {
    storeOptions(model, adminOf(model), request);
    model.setOption(adminOf(model), {"init_conf", "configured", "true"});
    return {};
}

Answer forgetConfiguration(Model& model, const Request&) {
    model.setOption(adminOf(model), {"init_conf", "configured", "false"});
    return {};
}

Answer succeed(Model&, const Request&) { return {}; }

// ---- objects by guid -----------------------------------------------------

std::string property(const Object& object, const std::string& name) {
    if (name == "name") return object.name;
    if (name == "guid") return object.guid;
    if (name == "type") return object.kind;
    if (name == "owner") return object.owner;
    throw Refusal("unknown property " + quoteWord(name));
}

Answer getInfo(Model& model, const Request& request) {
    const std::string* guid = request.option("guid");
    const std::string* names = request.option("property-names");
    if (guid == nullptr || names == nullptr) throw Refusal("-guid and -property-names are needed");
    const auto object = model.findGuid(*guid);
    if (!object) throw Refusal("there is no object with guid " + quoteWord(*guid));
    return {0, *names + "=" + property(*object, *names) + "\n", ""};
}

// ---- the table -----------------------------------------------------------

struct Command {
    std::string_view utility;
    std::string_view word;
    Shape shape;
    Answer (*run)(Model&, const Request&);
};

constexpr Command kCommands[] = {
    {"client", "--create", Shape::kName, createAccount},
    {"client", "--update", Shape::kName, updateAccount},
    {"client", "--remove", Shape::kName, removeAccount},
    {"client", "--info", Shape::kName, infoAccount},
    {"client", "--change-owner", Shape::kName, changeAccountOwner},
    {"client", "--convert-to-reseller", Shape::kName, convertToReseller},
    {"reseller", "--create", Shape::kName, createAccount},
    {"reseller", "--update", Shape::kName, updateAccount},
    {"reseller", "--remove", Shape::kName, removeAccount},
    {"reseller", "--info", Shape::kName, infoAccount},
    {"reseller", "--change-owner", Shape::kName, changeAccountOwner},
    {"reseller", "--convert-to-client", Shape::kName, convertToClient},
    {"client_pref", "--update", Shape::kName, updateAccount},
    {"reseller_pref", "--update", Shape::kName, updateAccount},
    {"ip_pool", "--add", Shape::kName, addToIpPool},
    {"domain", "--create", Shape::kName, createDomain},
    {"domain", "--update", Shape::kName, updateDomain},
    {"domain", "--remove", Shape::kName, removeDomain},
    {"domain", "--info", Shape::kName, infoDomain},
    {"domain", "--change-owner", Shape::kName, changeDomainOwner},
    {"domain", "-s", Shape::kOptions, listShells},
    {"domain_pref", "--update", Shape::kName, updateDomain},
    {"domain_pref", "-u", Shape::kName, updateDomain},
    {"domain_pref", "-d", Shape::kName, makeDefaultDomain},
    {"domadmin", "--update", Shape::kName, updateDomain},
    {"traffic", "--add-batch", Shape::kName, addDomainTraffic},
    {"traffic", "--add-batch-user", Shape::kName, addUserTraffic},
    {"domain_template", "--create", Shape::kName, createTemplate},
    {"domain_template", "-x", Shape::kName, showTemplate},
    {"client_template", "--create", Shape::kName, createTemplate},
    {"client_template", "-x", Shape::kName, showTemplate},
    {"reseller_template", "--create", Shape::kName, createTemplate},
    {"reseller_template", "-x", Shape::kName, showTemplate},
    {"admin", "--update", Shape::kOptions, updateAdmin},
    {"admin", "-u", Shape::kOptions, updateAdmin},
    {"admin", "-xi", Shape::kOptions, showAdmin},
    {"ipmanage", "-c", Shape::kName, addIp},
    {"ipmanage", "-u", Shape::kName, updateIp},
    {"ipmanage", "-xi", Shape::kOptions, showIps},
    {"ipmanage", "--reset_ssl_certificate", Shape::kOptions, succeed},
    {"init_conf", "--check-configured", Shape::kOptions, checkConfigured},
    {"init_conf", "--init", Shape::kOptions, configure},
    {"init_conf", "--update", Shape::kOptions, configure},
    {"init_conf", "--forget", Shape::kOptions, forgetConfiguration},
    {"websrvmng", "--reconfigure-all", Shape::kOptions, succeed},
    {"objectInfo", "--getinfo", Shape::kOptions, getInfo},
};

const Command* findCommand(const Call& call) {
    const std::string_view word =
        call.arguments.empty() ? std::string_view() : std::string_view(call.arguments[0]);
    const auto* found =
        std::find_if(std::begin(kCommands), std::end(kCommands), [&](const Command& command) {
            return command.utility == call.utility && command.word == word;
        });
    return found != std::end(kCommands) ? found : nullptr;
}

bool isModelled(const std::string& utility) {
    return std::any_of(std::begin(kCommands), std::end(kCommands),
                       [&](const Command& command) { return command.utility == utility; });
}

}  // namespace

Answer serveFromModel(Model& model, const Call& call) {
    if (call.utility == "xt-engine-zelvorun") return runSuspendHandler(model, call);
    if (const Command* command = findCommand(call)) {
        return command->run(model, Request(call, command->shape));
    }
    if (isModelled(call.utility)) {
        throw Refusal("unknown command " +
                      (call.arguments.empty() ? "" : quoteWord(call.arguments[0])));
    }
    return {};
}

Answer serveWithoutModel(const Call& call) {
    const std::string word = call.arguments.empty() ? "" : call.arguments[0];
    if (call.utility == "ipmanage" && word == "-xi") {
        return {0, "<ipinfo>\n" + ipElement("192.0.2.10", "shared", "") + "</ipinfo>\n", ""};
    }
    if (call.utility == "admin" && word == "-xi")
        return {0, adminDocument("US", "NY", "10001"), ""};
    if (call.utility == "domain" && word == "-s") return {0, shellList(), ""};
    if (call.utility == "domain_template" && word == "-x") {
        return {
            0, "<domain-template>\n" + templateItem("vh_type", "physical") + "</domain-template>\n",
            ""};
    }
    // Every guid is that of the administrator's own objects.
    if (call.utility == "objectInfo") return {0, "name=admin\n", ""};
    return {};
}

}  // namespace sandbox
