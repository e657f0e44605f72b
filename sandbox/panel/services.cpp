// The utilities of the small things that accounts and domains have: certificates, skeletons,
// buttons, cron tables, Java applications and the filters of web statistics.
#include <optional>

#include "panel/command.h"
#include "panel/given_file.h"
#include "panel/objects.h"
#include "panel/system_objects.h"
#include "panel/system_users.h"
#include "words.h"

namespace sandbox {

namespace {

// ---- certificates --------------------------------------------------------

Object certificateRepository(Model& model, const Request& request) {
    if (request.option("admin") != nullptr) {
        return theServer(model, request);
    }
    return domainOption(model, request);
}

constexpr ParentRule kRepository{"domain", certificateRepository};
constexpr char kRepositoryFlags[] = "admin default";

// Of a file its size is kept.
Answer createCertificate(Model& model, const Request& request) {
    createObject(model, request);
    const Object certificate = requestedObject(model, request);
    for (const char* name : {"cert-file", "key-file", "csr-file", "cacert-file"}) {
        if (const std::string* path = request.option(name)) {
            model.setOption(certificate, {"certificate", name,
                                          std::to_string(readSecret(*path).size()) + " bytes"});
        }
    }
    return {};
}

Answer renameCertificate(Model& model, const Request& request) {
    const Object certificate = requestedObject(model, request);
    const std::string& name = request.neededOption("new-name");
    if (model.find("certificate", name, model.at(certificate.parent))) {
        throw Refusal("certificate " + quoteWord(name) + " exists already");
    }
    model.setName(certificate, name);
    return {};
}

// ---- skeletons -----------------------------------------------------------

bool isTar(const std::string& archive) {
    constexpr std::size_t kBlock = 512;
    constexpr std::size_t kMagic = 257;
    return archive.size() > kBlock && archive.compare(kMagic, 5, "ustar") == 0;
}

// The owner's next one takes the place of the first; its size is kept.
Answer installSkeleton(Model& model, const Request& request) {
    const Object owner = ownerFor(model, request.command.kind, request.name);
    const std::string& path = request.neededOption("filename");
    const std::string archive = readSecret(path);
    if (request.neededOption("force-type") != "tar" || !isTar(archive)) {
        throw Refusal(quoteWord(path) + " is no archive of that type");
    }
    model.setOption(owner, {"skeleton", "archive", std::to_string(archive.size()) + " bytes"});
    return {};
}

// ---- buttons -------------------------------------------------------------

// Whoever sees the button: the administrator, an account, a domain or a mail user.
Object buttonOwner(Model& model, const Request& request) {
    const std::string& owner = request.neededOption("owner");
    if (owner == kAdminName) {
        return theAdmin(model, request);
    }
    if (const auto account = findAccount(model, owner)) {
        return *account;
    }
    if (const auto user = model.find("mail", owner)) {
        return *user;
    }
    return existing(model, "domain", owner.substr(owner.find('@') + 1));
}

constexpr ParentRule kButtonOwner{"owner", buttonOwner, Unique::kOnPanel};

Answer buttonId(const std::string& id) {
    return {0, "<?xml version=\"1.0\"?>\n<custombutton-id>" + id + "</custombutton-id>\n", ""};
}

Answer createButton(Model& model, const Request& request) {
    if (const std::string* icon = request.option("file")) {
        readGiven(*icon);
    }
    const Object owner = buttonOwner(model, request);
    const Object button =
        model.insert("custombutton", std::to_string(nextNumber(model, "custombutton")), owner);
    storeOptions(model, button, request);
    return request.option("print-id") != nullptr ? buttonId(button.name) : Answer{};
}

Answer someButtonId() { return buttonId("1"); }

// ---- cron tables ---------------------------------------------------------

// An account of the panel's making, or else of the machine.
Object cronUser(Model& model, const std::string& login) {
    if (const auto user = model.find(kSystemUser, login)) {
        return *user;
    }
    if (!systemUserId(login)) {
        throw Refusal("there is no account " + quoteWord(login));
    }
    const Object server = model.at(Model::kServer);
    const auto known = model.find("crontab", login, server);
    return known ? *known : model.insert("crontab", login, server);
}

// "set FILE USER"
Answer setCronTable(Model& model, const Request& request) {
    if (request.words.size() != 1) {
        throw Refusal("a file and a user are needed");
    }
    const std::string table = readGiven(request.name);
    model.setOption(cronUser(model, request.words.front()), {"crontabmng", "table", table});
    return {};
}

// ---- Java applications ---------------------------------------------------

// "--install PATH": an application has the name of its archive.
Answer installApplication(Model& model, const Request& request) {
    readGiven(request.name);
    const std::string file = request.name.substr(request.name.rfind('/') + 1);
    const std::string name = file.substr(0, file.rfind('.'));
    const Object domain = domainOption(model, request);
    if (model.find("webapp", name, domain)) {
        throw Refusal("webapp " + quoteWord(name) + " exists already");
    }
    model.insert("webapp", name, domain);
    return {};
}

// ---- web statistics ------------------------------------------------------

constexpr const char* kFilters[] = {"hidden_direct", "hidden", "group"};

Answer removeFilters(Model& model, const Request& request) {
    const Object domain = requestedObject(model, request);
    for (const char* type : kFilters) {
        model.setList(domain, "webstat", type, {});
    }
    return {};
}

Answer addFilter(Model& model, const Request& request) {
    const std::string& type = request.neededOption("type");
    std::string value = "true";
    if (type == "hidden" || type == "group") {
        value = quoteWord(request.neededOption("url"));
    } else if (type != "hidden_direct") {
        throw Refusal("unknown type " + quoteWord(type));
    }
    if (type == "group") {
        value = quoteWord(request.neededOption("group")) + " " + value;
    }
    model.addOption(requestedObject(model, request), {"webstat", type, value});
    return {};
}

constexpr Command kRows[] = {
    {"certificate", "--create", Shape::kName, "certificate", kRepository, createCertificate,
     nullptr, kRepositoryFlags},
    {"certificate", "--update", Shape::kName, "certificate", kRepository, renameCertificate,
     nullptr, kRepositoryFlags},
    {"certificate", "--remove", Shape::kName, "certificate", kRepository, removeObject, nullptr,
     kRepositoryFlags},
    {"custombutton", "--create", Shape::kOptions, "custombutton", kButtonOwner, createButton,
     someButtonId, "print-id"},
    {"custombutton", "--remove", Shape::kName, "custombutton", kButtonOwner, removeObject},
    {"crontabmng", "set", Shape::kWords, "", kServer, setCronTable},
    {"skeleton", "--install", Shape::kName, "skeleton", kOwner, installSkeleton},
    {"tomcat", "--update-service", Shape::kName, "domain", kOwner, updateObject, nullptr,
     "no-restart"},
    {"tomcat", "--install", Shape::kName, "webapp", kEachDomain, installApplication, nullptr,
     "no-restart"},
    {"tomcat", "--update", Shape::kName, "webapp", kEachDomain, updateObject, nullptr,
     "no-restart"},
    {"webstat", "--del-all", Shape::kName, "domain", kOwner, removeFilters},
    {"webstat", "-a", Shape::kName, "domain", kOwner, addFilter},
};

}  // namespace

Commands serviceCommands() { return rowsOf(kRows); }

}  // namespace sandbox
