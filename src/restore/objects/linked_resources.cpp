#include "restore/objects/linked_resources.h"

#include <boost/algorithm/string/join.hpp>

#include "report/guard.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

namespace {

using Numbers = std::vector<std::string>;

std::string listOf(const Numbers& numbers) { return boost::algorithm::join(numbers, ","); }

void appendList(CmdLine& cmd, const char* option, const Numbers& numbers) {
    if (!numbers.empty()) {
        cmd << option << listOf(numbers);
    }
}

void remove(const char* utility, const char* verb, const Numbers& numbers) {
    if (!numbers.empty()) {
        guarded([&] { commandOn(utility, verb, listOf(numbers)).exec(); });
    }
}

}  // namespace

void appendLinkedResources(const LinkedResources& linked, CmdLine& cmd) {
    appendList(cmd, "-linked-dbs", linked.databases);
    appendList(cmd, "-linked-dbus", linked.databaseUsers);
    appendList(cmd, "-linked-cbs", linked.buttons);
}

void deleteLinkedResources(const Numbers& dbs, const Numbers& dbusers, const Numbers& buttons) {
    remove("database", "--remove-dbs", dbs);
    remove("database", "--remove-dbus", dbusers);
    remove("custombutton", "--remove", buttons);
}

}  // namespace zelvo
