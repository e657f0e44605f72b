// Settings whose refusal costs nothing but themselves.
#pragma once

#include <initializer_list>

#include "exec/cli_exec.h"
#include "restore/toolbox/option_table.h"

namespace zelvo {

// Runs the head with the options of the table that the node calls for; does nothing if there are
// none. The failure of the command is in the debug log alone; a value that the table refuses is
// told.
void trySettings(const XmlNode& node, const CliExec& head, std::initializer_list<OptionRow> table);

// The same with each row of the table as a command of its own, in their order.
void tryEachSetting(const XmlNode& node, const CliExec& head,
                    std::initializer_list<OptionRow> table);

}  // namespace zelvo
