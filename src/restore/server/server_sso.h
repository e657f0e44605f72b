// The panel's part in single sign-on.
#pragma once

#include "xml/xml_node.h"

namespace zelvo {

// Registers the panel anew: with what it knows, if the service takes that for valid, or else with
// what the dump says. server: the `server` element, with `sso-settings`. Raises NotValidSsoInfo if
// neither has anything, the failures of PanelFile, and what askWhether and CliExec::exec raise.
void ssoRegistration(const XmlNode& server);

// Writes the settings of `sso-settings` into the panel. Certificates go in files that are gone
// afterwards. Raises the failures of PanelFile, and what CliExec::exec raises.
void deploySsoSettings(const XmlNode& server);

// Gives a domain the login page of another identity provider. record: of `sso-branding`. A failure
// is in the debug log alone.
void deploySSOBranding(const XmlNode& record);

}  // namespace zelvo
