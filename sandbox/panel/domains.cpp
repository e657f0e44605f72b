// The utilities of domains and of what hangs on them.
#include "files.h"
#include "panel/command.h"
#include "panel/objects.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

// The template is one of the owner or of the administrator.
Answer createDomain(Model& model, const Request& request) {
    createObject(model, request);
    const std::string* used = request.option("template");
    if (used != nullptr && !model.find("domain_template", *used, ownerOption(model, request)) &&
        !model.find("domain_template", *used, model.at(Model::kAdmin))) {
        throw Refusal("domain_template " + quoteWord(*used) + " does not exist");
    }
    return {};
}

Answer tellDomain(Model& model, const Request& request) {
    const Object domain = requestedObject(model, request);
    return {0, "name=" + domain.name + "\nowner=" + model.at(domain.parent).name + "\n", ""};
}

// The domain that answers for an address when no other name fits.
Answer makeDefaultDomain(Model& model, const Request& request) {
    const Object domain = requestedObject(model, request);
    model.setOption(domain, {"domain_pref", "default-domain", "true"});
    if (const auto address = model.option(domain, "domain", "ip")) {
        model.setOption(existing(model, "ip", *address),
                        {"ipmanage", "default-domain", domain.name});
    }
    return {};
}

Answer shellList() {
    if (const auto own = readFile(stateFile(kShellsFile))) {
        return {0, *own, ""};
    }
    return {0, "/bin/sh\n/bin/bash\n/bin/false\n" + std::string(kProductRoot) + "/bin/chrootsh\n",
            ""};
}

Answer listShells(Model&, const Request&) { return shellList(); }

// "suspend DOMAIN SESSION", and "unsuspend".
Answer setSuspended(Model& model, const Request& request) {
    if (request.words.size() != 1) {
        throw Refusal("a domain and a session are needed");
    }
    const std::string value = request.command.word == "suspend" ? "true" : "false";
    model.setOption(requestedObject(model, request),
                    {std::string(request.command.utility), "suspended", value});
    return {};
}

constexpr char kHandler[] = "SuspendHandlerRunner";

constexpr Command kRows[] = {
    {"domain", "--create", Shape::kName, "domain", kOwner, createDomain, nullptr, "force"},
    {"domain", "--update", Shape::kName, "domain", kOwner, updateObject},
    {"domain", "--remove", Shape::kName, "domain", kOwner, removeObject},
    {"domain", "--info", Shape::kName, "domain", kOwner, tellDomain},
    {"domain", "--change-owner", Shape::kName, "domain", kOwner, moveObject},
    {"domain", "-s", Shape::kOptions, "", kServer, listShells, shellList},
    {"domain_pref", "--update", Shape::kName, "domain", kOwner, updateObject},
    {"domain_pref", "-u", Shape::kName, "domain", kOwner, updateObject},
    {"domain_pref", "-d", Shape::kName, "domain", kOwner, makeDefaultDomain},
    {"domadmin", "--update", Shape::kName, "domain", kOwner, updateObject},
    {"maillist", "--update-service", Shape::kName, "domain", kOwner, updateObject},
    {kHandler, "suspend", Shape::kWords, "domain", kOwner, setSuspended},
    {kHandler, "unsuspend", Shape::kWords, "domain", kOwner, setSuspended},
};

}  // namespace

Commands domainCommands() { return rowsOf(kRows); }

}  // namespace sandbox
