#include "restore/domain/performance.h"

#include "restore/toolbox/command_in_parts.h"
#include "restore/toolbox/option_table.h"

namespace zelvo {

void updatePerformance(const CliExec& head, const XmlNode& site) {
    // The element is spelled so in every dump.
    if (site.test("preferences/perfomance")) {
        tryOptions(head, [&site](CmdLine& cmd) {
            appendOptions(
                site, cmd,
                {{"-max-connections", "preferences/perfomance/max-connections", always},
                 {"-traffic-bandwidth", "preferences/perfomance/traffic-bandwidth", always}});
        });
    }
}

}  // namespace zelvo
