#include "restore/server/server_visibility.h"

#include <string>

#include "report/debug_log.h"
#include "restore/toolbox/option_table.h"
#include "restore/toolbox/panel_command.h"

namespace zelvo {

void deployServerControlsVisibility(const XmlNode& node) {
    theDebugLog->log(std::string("Server controls visibility deployment"));
    CliExec cmd = panelCommand("interface_template", {"--preferences"});
    cmd.expectOptions();
    appendOptions(
        node, cmd,
        {{"-hide_disabled", "hide-disabled-buttons", trueOrFalseIfThere},
         {"-hide_unavailable_limits", "hide-disabled-limits", trueOrFalseIfThere},
         {"-hide_unavailable_permissions", "hide-disabled-permissions", trueOrFalseIfThere},
         {"-domain_registration", "hide-domain-registration-buttons", trueOrFalseIfThere},
         {"-cert_purchasing", "hide-certificate-purchasing-buttons", trueOrFalseIfThere},
         {"-extras", "hide-extra-services-buttons", trueOrFalseIfThere},
         {"-mail_bounce", "hide-mail-bouncing-controls", trueOrFalseIfThere},
         {"-newsfeeds", "hide-newsfeeds", trueOrFalseIfThere},
         {"-promo_krexa", "hide-krexa-promotion", trueOrFalseIfThere}});
    cmd.exec();
}

}  // namespace zelvo
