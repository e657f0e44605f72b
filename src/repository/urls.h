// The URLs of repositories (RFC 3986 as far as they need it) and of the files in them.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The text between "://" and the last "@": login, or login and password. Empty if there is none.
std::string GetUrlLogin(const std::string& url);
// The URL without login and password; empty for one that ends in "@".
std::string GetUrlPlace(const std::string& url);
// base: up to and with the last "/" behind the scheme. name: the rest.
void DecomposeUrl(const std::string& url, std::string& base, std::string& name);
// Each of urls, in order. Raises UrleDecomposingError when they have not one base.
void DecomposeUrls(const std::vector<std::string>& urls, std::string& base,
                   std::vector<std::string>& names);

}  // namespace zelvo
