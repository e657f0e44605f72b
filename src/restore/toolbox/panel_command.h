// The heads of the commands that go to the panel's own utilities.
#pragma once

#include <initializer_list>
#include <string>

#include "exec/cli_exec.h"

namespace zelvo {

// All take a utility's name without directory and extension, and words that become arguments.

// The panel's utility with these first arguments, ready to take more.
CliExec panelCommand(const std::string& utility, std::initializer_list<std::string> head = {});

// "UTILITY VERB NAME". Raises UnsafeName for a name that the utility would take for an option.
CliExec commandOn(const std::string& utility, const std::string& verb, const std::string& name);

// These raise it too: "UTILITY --create NAME".
CliExec createCommand(const std::string& utility, const std::string& name);

// "UTILITY --update NAME", which runs whatever follows.
CliExec updateCommand(const std::string& utility, const std::string& name);

// "UTILITY --update NAME" that runs only if something is appended to it.
CliExec optionalUpdate(const std::string& utility, const std::string& name);

// Runs the utility with these arguments and no others. Raises what CliExec::exec raises.
void runPanelCommand(const std::string& utility, std::initializer_list<std::string> arguments);

// Runs the command through exec(nothrow). Raises ExecCmd::Failed for a code other than 0, also for
// one that stands for a failure of the gate.
void execOrReport(CliExec& command);

// Runs the command. A code other than 0, and one that stands for a failure of the gate, is in the
// debug log and nowhere else.
void execOrLog(CliExec command);

// Whether a utility that is asked says yes: code 0. Raises ExecCmd::Failed if it gave no answer,
// see CliExec::hasAnswered.
bool askWhether(const std::string& utility, std::initializer_list<std::string> arguments);

// What a utility says when it is asked: its standard output. Its code counts only where there is
// nothing to read. Raises ExecCmd::Failed then.
std::string askPanel(const std::string& utility, std::initializer_list<std::string> arguments);

}  // namespace zelvo
