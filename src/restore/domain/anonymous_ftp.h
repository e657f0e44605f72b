// The anonymous FTP access of a site.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// Applies an `anonftp` element. Permissions and the login message can only be switched on by it.
// domainName: in UTF-8. Raises UnsafeName and ExecCmd::Failed.
void deployAnonymousFtp(const XmlNode& anonftp, const std::string& domainName);

}  // namespace zelvo
