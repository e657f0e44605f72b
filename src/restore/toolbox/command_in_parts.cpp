#include "restore/toolbox/command_in_parts.h"

#include <utility>

#include "report/guard.h"

namespace zelvo {

namespace {

void execWith(CliExec command, const OptionGroup& options) {
    options(command);
    command.exec();
}

}  // namespace

void CommandInParts::add(PartCost cost, OptionGroup options) {
    parts_.push_back({cost, std::move(options)});
}

bool CommandInParts::exec() const {
    return exec([this](CmdLine& cmd) {
        for (const Part& part : parts_) {
            part.options(cmd);
        }
    });
}

bool CommandInParts::exec(const OptionGroup& all) const {
    CliExec command = head_;
    all(command);
    if (guarded([&command] { command.exec(); })) {
        return true;
    }
    execParts();
    return false;
}

void CommandInParts::execParts() const {
    for (const Part& part : parts_) {
        execPart(part);
    }
}

void CommandInParts::execPart(const Part& part) const {
    switch (part.cost) {
        case PartCost::kTheRest:
            execWith(head_, part.options);
            break;
        case PartCost::kItself:
            tryOptions(head_, part.options);
            break;
        case PartCost::kNothing:
            silenced([&] { execWith(head_, part.options); });
            break;
    }
}

void tryOptions(const CliExec& head, const OptionGroup& options) {
    guarded([&] { execWith(head, options); });
}

}  // namespace zelvo
