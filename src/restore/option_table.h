// Tables of options: which item of an element becomes which option of a utility.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "exec/cli_exec.h"
#include "xml/xml_node.h"

namespace zelvo {

// One option: sent with the string value of xpath when the element has what xpath names.
struct OptionRow {
    const char* option;
    const char* xpath;
};

// Appends the options of the table that the node has, in the order of the table. Returns whether
// any was appended.
bool appendOptions(const XmlNode& node, CmdLine& cmd, std::initializer_list<OptionRow> table);

// A command "UTILITY --update NAME" of the panel that runs only if something is appended to it.
// utility: a name without directory and extension.
CliExec updateCommand(const std::string& utility, const std::string& name);

// The panel's utility of that name, ready to take arguments.
CliExec panelCommand(const std::string& utility);

// Appends an optional group of options to a command; returns whether it appended any.
using OptionGroup = std::function<bool(CmdLine&)>;

// Runs one optional group of options as an updateCommand of its own, if it has anything to say. A
// failure goes to deploy_error_func, so that one group costs no other.
void tryUpdateGroup(const std::string& utility, const std::string& name,
                    const OptionGroup& options);

}  // namespace zelvo
