#include "restore/toolbox/try_settings.h"

#include "report/guard.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

void trySettings(const XmlNode& node, const CliExec& head, std::initializer_list<OptionRow> table) {
    guarded([&] {
        CliExec cmd = head;
        if (appendOptions(node, cmd, table)) {
            execOrLog(cmd);
        }
    });
}

void tryEachSetting(const XmlNode& node, const CliExec& head,
                    std::initializer_list<OptionRow> table) {
    for (const OptionRow& row : table) {
        trySettings(node, head, {row});
    }
}

}  // namespace zelvo
