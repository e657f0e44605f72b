// Settings that go out in one call, and one by one if that call is refused.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "exec/cli_exec.h"

namespace zelvo {

// Appends an optional group of options to a command, or nothing.
using OptionGroup = std::function<void(CmdLine&)>;

// What the failure of a part costs when the parts go out one by one.
enum class PartCost {
    kTheRest,  // it is raised, and the parts behind it are lost
    kItself,   // it is told, and the next part follows
    kNothing,  // it is not even told: the failure of the call for all has been
};

// One command in two forms. Nothing that a part adds, its environment included, travels along with
// another part.
class CommandInParts {
  public:
    // head: the utility and the arguments that each call begins with. Behind expectOptions() a part
    // that appends nothing is not run.
    explicit CommandInParts(CliExec head) : head_(std::move(head)) {}

    // Adds a part behind those that are there. What the options refer to must outlive exec.
    void add(PartCost cost, OptionGroup options);

    // Runs the command with the options of all parts in their order. A failure of the run is told,
    // and then each part runs by itself. A failure to make the command for all is raised. Returns
    // whether the one call was enough.
    bool exec() const;
    // The same with other options, or another order of them, in the one call.
    bool exec(const OptionGroup& all) const;

  private:
    struct Part {
        PartCost cost;
        OptionGroup options;
    };

    void execParts() const;
    void execPart(const Part& part) const;

    CliExec head_;
    std::vector<Part> parts_;
};

// Runs one optional group of options behind the head, if it has anything to say. A failure is told,
// so that one group costs no other.
void tryOptions(const CliExec& head, const OptionGroup& options);

}  // namespace zelvo
