// The utilities of domains and of what hangs on them.
#include "files.h"
#include "panel/command.h"
#include "panel/hosting.h"
#include "panel/objects.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

// A template of the owner or of the administrator.
Object usedTemplate(Model& model, const Request& request, const std::string& name) {
    for (const Object& owner : {ownerOption(model, request), model.at(Model::kAdmin)}) {
        if (const auto used = model.find("domain_template", name, owner)) {
            return *used;
        }
    }
    throw Refusal("domain_template " + quoteWord(name) + " does not exist");
}

Answer createDomain(Model& model, const Request& request) {
    createObject(model, request);
    const Object domain = requestedObject(model, request);
    const std::string* name = request.option("template");
    if (name != nullptr) {
        makeTemplateHosting(model, domain, usedTemplate(model, request, *name), request);
    } else {
        applyHosting(model, domain, request);
    }
    return {};
}

Answer updateDomain(Model& model, const Request& request) {
    const Object domain = requestedObject(model, request);
    storeOptions(model, domain, request);
    applyHosting(model, domain, request);
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
    {"domain", "--update", Shape::kName, "domain", kOwner, updateDomain},
    {"domain", "--remove", Shape::kName, "domain", kOwner, removeObject},
    {"domain", "--info", Shape::kName, "domain", kOwner, tellDomain},
    {"domain", "--change-owner", Shape::kName, "domain", kOwner, moveObject},
    {"domain", "-s", Shape::kOptions, "", kServer, listShells, shellList},
    {"domain_pref", "--update", Shape::kName, "domain", kOwner, updateObject},
    {"domain_pref", "-u", Shape::kName, "domain", kOwner, updateObject},
    {"domain_pref", "-d", Shape::kName, "domain", kOwner, makeDefaultDomain},
    {"domadmin", "--update", Shape::kName, "domain", kOwner, updateObject},
    {kHandler, "suspend", Shape::kWords, "domain", kOwner, setSuspended},
    {kHandler, "unsuspend", Shape::kWords, "domain", kOwner, setSuspended},
};

}  // namespace

Commands domainCommands() { return rowsOf(kRows); }

}  // namespace sandbox
