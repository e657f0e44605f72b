// The directories that the panel makes for web sites, mail and mail lists, with their owners and
// modes.
#pragma once

#include <string>

namespace sandbox {

// The directory of a domain's virtual host, named by the ASCII form of the domain in small letters;
// empty when virtual hosts do not lie below the product: they would then be in a directory of the
// machine, and the panel makes none. Throws Refusal for a name that is no name of a directory.
std::string virtualHostDirectory(const std::string& domain);

// That of a subdomain or of a web user in it. Throws Refusal as above.
std::string subdomainDirectory(const std::string& virtualHost, const std::string& subdomain);
std::string webUserDirectory(const std::string& virtualHost, const std::string& login);

// That of a mail name, and that of a list's archive. Empty where virtual hosts' would be. Throw
// Refusal as above.
std::string mailDirectory(const std::string& domain, const std::string& name);
std::string listArchive(const std::string& list);

// Make a directory with all that belongs in it, for an account that exists. Throw
// std::runtime_error.
void makeVirtualHost(const std::string& directory, const std::string& owner);
void makeSubdomain(const std::string& directory, const std::string& owner);
void makeWebUser(const std::string& directory, const std::string& owner);
void makeMailDirectory(const std::string& directory, const std::string& owner);
void makeListArchive(const std::string& directory, const std::string& owner);

}  // namespace sandbox
