// Where the content archives of a dump are to come from.
#pragma once

#include <string>

#include "xml/xml_node.h"

namespace zelvo {

// The place of the repository that holds the archives of a dump, a local path or a URL: the one of
// the command line, or else the directory of the dump's @base, or else the session. dumpRoot: the
// dump's root element.
std::string chooseRepositoryPath(const std::string& repositoryUrl, const XmlNode& dumpRoot,
                                 const std::string& sessionPath);

}  // namespace zelvo
