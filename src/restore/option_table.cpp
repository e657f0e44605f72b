#include "restore/option_table.h"

#include "commons/files.h"
#include "restore/guard.h"

namespace zelvo {

bool appendOptions(const XmlNode& node, CmdLine& cmd, std::initializer_list<OptionRow> table) {
    bool appended = false;
    for (const OptionRow& row : table) {
        if (node.test(row.xpath)) {
            cmd << row.option << node.str(row.xpath);
            appended = true;
        }
    }
    return appended;
}

CliExec panelCommand(const std::string& utility) {
    return CliExec(files::getDirectCliUtilityPath(utility));
}

CliExec updateCommand(const std::string& utility, const std::string& name) {
    CliExec cmd = panelCommand(utility);
    cmd << "--update" << name;
    cmd.expectOptions();
    return cmd;
}

void tryUpdateGroup(const std::string& utility, const std::string& name,
                    const OptionGroup& options) {
    guarded([&] {
        CliExec cmd = updateCommand(utility, name);
        if (options(cmd)) {
            cmd.exec();
        }
    });
}

}  // namespace zelvo
