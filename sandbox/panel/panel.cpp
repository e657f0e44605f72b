#include "panel/panel.h"

#include "files.h"
#include "panel/request.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

// A script of the panel, called through the panel's interpreter, is the utility itself.
Call withoutInterpreter(Call call) {
    if (call.utility == kInterpreter && !call.arguments.empty()) {
        call.utility = utilityName(call.arguments.front());
        call.arguments.erase(call.arguments.begin());
    }
    return call;
}

std::string_view wordOf(const Call& call) {
    return call.arguments.empty() ? std::string_view() : call.arguments.front();
}

struct Found {
    const Command* command = nullptr;  // null: the utility has no such command
    bool isKnown = false;              // whether the utility has any
};

Found lookUp(const Call& call) {
    Found found;
    for (const Commands rows :
         {accountCommands(), domainCommands(), hostingCommands(), serviceCommands(), zoneCommands(),
          mailCommands(), mailListCommands(), databaseCommands(), addressCommands(),
          templateCommands(), serverCommands(), serverSettingsCommands(), siteAppCommands()}) {
        for (const Command& row : rows) {
            if (row.utility != call.utility) {
                continue;
            }
            if (row.shape == Shape::kAlone || row.word == wordOf(call)) {
                return {&row, true};
            }
            found.isKnown = true;
        }
    }
    return found;
}

std::string unknownCommand(const Call& call) {
    return call.arguments.empty() ? "no command is given"
                                  : "unknown command " + quoteWord(call.arguments.front());
}

}  // namespace

Answer serveFromModel(Model& model, const Call& call) {
    const Call inner = withoutInterpreter(call);
    const Found found = lookUp(inner);
    if (found.command != nullptr) {
        return found.command->run(model, Request(inner, *found.command));
    }
    if (found.isKnown) {
        throw Refusal(unknownCommand(inner));
    }
    if (fileExists(stateFile(kAcceptUnknownFile))) {
        return {};
    }
    throw Refusal("unknown utility " + quoteWord(inner.utility));
}

Answer serveWithoutModel(const Call& call) {
    const Command* command = lookUp(withoutInterpreter(call)).command;
    return command != nullptr && command->runWithoutModel != nullptr ? command->runWithoutModel()
                                                                     : Answer{};
}

}  // namespace sandbox
