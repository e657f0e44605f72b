// Where the content archives of a dump are to come from.
#pragma once

#include <memory>
#include <string>

#include "repository/repository.h"
#include "xml/xml_node.h"

namespace zelvo {

// The place of the repository that holds the archives of a dump, a local path or a URL: the one of
// the command line, or else the directory of the dump's @base, or else the session. dumpRoot: the
// dump's root element.
std::string chooseRepositoryPath(const std::string& repositoryUrl, const XmlNode& dumpRoot,
                                 const std::string& sessionPath);

// The repository at a place. path: as above; an FTP URL may hold login and password,
// percent-encoded (RFC 3986), which count where no login is given. login, password: as given, or
// empty. Raises RepositoryError for a URL without host.
std::unique_ptr<tRepository> openRepository(const std::string& path, const std::string& login,
                                            const std::string& password);

}  // namespace zelvo
