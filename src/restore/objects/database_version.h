// What the versions of database servers allow: a dump does not go to a server that is too old for
// it. The panel is asked for a version only where the answer counts.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// True for a hash of the form that MySQL has from 4.1.1 on: it begins with "*".
bool isNewStyleMysqlPassword(const std::string& password);

// Whether a MySQL of this version knows such hashes: one that begins with 3, 4.0 or 4.1.0 does not,
// any other does, an empty one too.
bool isMysqlSupportNewStylePassword(const std::string& version);

// The same for the panel's own MySQL. Raises CantReadPkgVersion.
bool panelSupportsNewStylePassword();

// Raises PostgresMigrationIsImpossibleToLowerVersion or, for all other types,
// IncompatibleDbPasswordVersion when the dump of a database must not go to this server; and
// CantReadPkgVersion. node: the `database` element.
void requireServerForDump(const XmlNode& node, const std::string& domainName);

}  // namespace zelvo
