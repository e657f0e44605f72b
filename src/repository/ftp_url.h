// URLs of files on an FTP server (RFC 1738, 3.2) and the login that goes with them.
#pragma once

#include <string>

namespace zelvo {

// login and password as libcurl takes them. result: the two joined by ":". inUrl: whether they must
// stand in the URL, as a login with ":" would be cut otherwise; result is percent-encoded then.
void GetAuthStr(const std::string& login, const std::string& password, std::string& result,
                bool& inUrl);

// auth and "@" in front of the host.
std::string GetUrlWithAuth(const std::string& url, const std::string& auth);

// The userinfo of a URL (RFC 3986, 3.2.1) as it stands there; empty for none. As GetUrlLogin and
// GetUrlPlace, but for an "@" in the path, which is no end of a login here.
std::string loginOfUrl(const std::string& url);
// A URL without it, as it may stand in a log.
std::string urlWithoutLogin(const std::string& url);
// Whether there is a host behind "ftp://" and the login. A "/" that stands in a password as it is
// makes a part of the login one, with what can be no port.
bool hasHost(const std::string& url);

// A plain URL in the form that libcurl takes: each component of its path percent-encoded, so that
// "#", ";", "?", "%" and blanks in a name are no more than that. url: "ftp://", host and path.
// Raises tFtpConnection::InvalidPath for another one and for a control character.
std::string encodeFtpUrl(const std::string& url);

// The same file's directory, and the directory that the login leads to; both end in "/". url: as
// encodeFtpUrl gives it.
std::string parentUrl(const std::string& url);
std::string rootUrl(const std::string& url);

}  // namespace zelvo
