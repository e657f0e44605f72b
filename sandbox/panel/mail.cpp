// The utilities of mail names and of what hangs on them: automatic answers, address books and the
// filters.
#include <sys/stat.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <string_view>

#include "panel/command.h"
#include "panel/objects.h"
#include "panel/site_tree.h"
#include "panel/system_objects.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

constexpr char kMailUser[] = "popuser";

// ---- mail names ----------------------------------------------------------

std::string_view localPart(const std::string& address) {
    return std::string_view(address).substr(0, address.find('@'));
}

// The domain of "NAME@DOMAIN".
Object mailDomain(Model& model, const Request& request) {
    const std::string& address = request.name;
    const std::size_t at = address.find('@');
    if (at == std::string::npos || at != address.rfind('@') || at == 0 || address[0] == '-') {
        throw Refusal("no mail name: " + quoteWord(address));
    }
    return existing(model, "domain", address.substr(at + 1));
}

constexpr ParentRule kMailDomain{"", mailDomain, Unique::kOnPanel};

void checkMailLists(const Request& request) {
    for (const char* option : {"aliases", "groupmem"}) {
        checkChanges(request, option, "add del");
    }
}

Answer createMail(Model& model, const Request& request) {
    checkMailLists(request);
    createObject(model, request);
    const Object mail = requestedObject(model, request);
    setDirectory(model, mail,
                 mailDirectory(model.at(mail.parent).name, std::string(localPart(mail.name))),
                 makeMailDirectory, kMailUser);
    return {};
}

Answer updateMail(Model& model, const Request& request) {
    checkMailLists(request);
    return updateObject(model, request);
}

// ---- automatic answers ---------------------------------------------------

Object mailOption(Model& model, const Request& request) {
    return existing(model, "mail", request.neededOption("mail"));
}

constexpr ParentRule kEachMail{"mail", mailOption};

// The file's name and size. The panel takes files from its temporary directory alone: a path that
// leads elsewhere would mail out a file of the server.
std::string attachment(const std::string& path) {
    char real[PATH_MAX];
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        realpath(path.c_str(), real) == nullptr) {
        throw Refusal("there is no file " + quoteWord(path));
    }
    if (!std::string_view(real).starts_with(std::string(kProductRoot) + "/RMK/tmp/")) {
        throw Refusal(quoteWord(path) + " is outside the temporary directory");
    }
    return path.substr(path.rfind('/') + 1) + " " + std::to_string(status.st_size) + " bytes";
}

Answer updateResponder(Model& model, const Request& request) {
    constexpr std::size_t kAdd = sizeof "add:" - 1;
    checkChanges(request, "attach", "add");
    updateObject(model, request);
    const std::string* paths = request.option("attach");
    if (paths == nullptr) {
        return {};
    }
    const Object responder = requestedObject(model, request);
    model.setList(responder, "autoresponder", "attach", {});
    for (const std::string_view path : splitText(std::string_view(*paths).substr(kAdd), ',')) {
        model.addOption(responder, {"autoresponder", "attached", attachment(std::string(path))});
    }
    return {};
}

Answer setAnswering(Model& model, const Request& request) {
    const char* value = request.command.word == "--on" ? "true" : "false";
    model.setOption(requestedObject(model, request), {"autoresponder", "enabled", value});
    return {};
}

// ---- address books -------------------------------------------------------

Object bookOwner(Model& model, const Request& request) {
    return existing(model, "mail", request.neededOption("owner-email"));
}

constexpr ParentRule kEachBook{"owner-email", bookOwner};

Answer createContact(Model& model, const Request& request) {
    const std::string& type = request.neededOption("type");
    if (type != "object" && type != "group") {
        throw Refusal("unknown type " + quoteWord(type));
    }
    return createObject(model, request);
}

// ---- filters -------------------------------------------------------------

constexpr char kFilterLists[] = "blacklist whitelist";

Answer updateFilter(Model& model, const Request& request) {
    for (const char* option : {"blacklist", "whitelist"}) {
        checkChanges(request, option, "add del disable");
    }
    return updateObject(model, request);
}

constexpr Command kRows[] = {
    {"mail",
     "--create",
     Shape::kName,
     "mail",
     kMailDomain,
     createMail,
     nullptr,
     {},
     "aliases groupmem"},
    {"mail",
     "--update",
     Shape::kName,
     "mail",
     kMailDomain,
     updateMail,
     nullptr,
     {},
     "aliases groupmem"},
    {"mail", "--delete", Shape::kName, "mail", kMailDomain, removeObject},
    {"mail", "--update-service", Shape::kName, "domain", kOwner, updateObject},
    {"autoresponder", "-c", Shape::kName, "autoresponder", kEachMail, createObject},
    {"autoresponder", "-u", Shape::kName, "autoresponder", kEachMail, updateResponder},
    {"autoresponder", "-d", Shape::kName, "autoresponder", kEachMail, removeObject},
    {"autoresponder", "--on", Shape::kName, "mail", kMailDomain, setAnswering},
    {"autoresponder", "--off", Shape::kName, "mail", kMailDomain, setAnswering},
    {"turboaddr", "-c", Shape::kName, "contact", kEachBook, createContact},
    {"spamassassin", "--info-server", Shape::kOptions, "", kServer, succeed},
    {"spamassassin",
     "--update",
     Shape::kName,
     "mail",
     kMailDomain,
     updateFilter,
     nullptr,
     {},
     kFilterLists},
    {"grey_listing",
     "--update-domain",
     Shape::kName,
     "domain",
     kOwner,
     updateFilter,
     nullptr,
     {},
     kFilterLists},
    {"grey_listing",
     "--update-mailname",
     Shape::kName,
     "mail",
     kMailDomain,
     updateFilter,
     nullptr,
     {},
     kFilterLists},
};

}  // namespace

Commands mailCommands() { return rowsOf(kRows); }

}  // namespace sandbox
