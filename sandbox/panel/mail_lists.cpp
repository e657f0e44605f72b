// The utilities of mail lists and of their archives.
#include <string>
#include <string_view>

#include "files.h"
#include "panel/command.h"
#include "panel/objects.h"
#include "panel/site_tree.h"
#include "panel/system_objects.h"
#include "words.h"

namespace sandbox {

namespace {

constexpr char kListUser[] = "list";

// A domain has its lists, but their manager knows each by its name alone.
constexpr ParentRule kDomain{"domain", domainOption, Unique::kOnPanel};

Answer createList(Model& model, const Request& request) {
    request.neededOption("email");
    createObject(model, request);
    setDirectory(model, requestedObject(model, request), listArchive(request.name), makeListArchive,
                 kListUser);
    return {};
}

Answer updateList(Model& model, const Request& request) {
    checkChanges(request, "members", "add");
    return updateObject(model, request);
}

// Makes the pages of a list's archive; how many messages they show is kept.
Answer makePages(Model& model, const Request& request) {
    const Object list = requestedObject(model, request);
    const std::string path = listArchive(list.name) + "/" + list.name + ".mbox";
    const auto mailbox = readFile(path);
    if (!mailbox) {
        throw Refusal("there is no file " + quoteWord(path));
    }
    long messages = 0;
    std::string_view before;
    for (const std::string_view line : splitText(*mailbox, '\n')) {
        messages += before.empty() && line.starts_with("From ") ? 1 : 0;
        before = line;
    }
    model.setOption(list, {"arch", "messages", std::to_string(messages)});
    return {};
}

constexpr Command kRows[] = {
    {"maillist", "--create", Shape::kName, "maillist", kDomain, createList},
    {"maillist",
     "--update",
     Shape::kName,
     "maillist",
     kEachDomain,
     updateList,
     nullptr,
     {},
     "members"},
    {"maillist", "--update-service", Shape::kName, "domain", kOwner, updateObject},
    {"arch", "", Shape::kAlone, "maillist", kDomain, makePages},
};

}  // namespace

Commands mailListCommands() { return rowsOf(kRows); }

}  // namespace sandbox
