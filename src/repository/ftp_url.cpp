#include "repository/ftp_url.h"

#include <algorithm>

#include "exec/url_encoding.h"
#include "repository/ftp_connection.h"
#include "repository/path_guard.h"
#include "repository/urls.h"

namespace zelvo {

namespace {

const std::string kScheme = "ftp://";

// What would end the login, or the URL, too early.
std::string escapeLogin(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        const std::string one(1, character);
        escaped +=
            std::string("%:@/#? ").find(character) != std::string::npos ? urlencode(one) : one;
    }
    return escaped;
}

std::size_t hostBegin(const std::string& url) {
    return url.starts_with(kScheme) ? kScheme.size() : 0;
}

// Where the path of a URL begins: its length if it has none.
std::size_t pathBegin(const std::string& url) {
    return std::min(url.find('/', hostBegin(url)), url.size());
}

std::string encodeComponents(const std::string& path) {
    std::string encoded;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin + 1), path.size());
        encoded += "/";
        if (end > begin + 1) {
            encoded += urlencode(path.substr(begin + 1, end - begin - 1));
        }
        begin = end;
    }
    return encoded.empty() ? "/" : encoded;
}

}  // namespace

void GetAuthStr(const std::string& login, const std::string& password, std::string& result,
                bool& inUrl) {
    inUrl = login.find(':') != std::string::npos;
    result = inUrl ? escapeLogin(login) + ":" + escapeLogin(password) : login + ":" + password;
}

std::string GetUrlWithAuth(const std::string& url, const std::string& auth) {
    return url.starts_with(kScheme) ? kScheme + auth + "@" + url.substr(kScheme.size())
                                    : auth + "@" + url;
}

std::string loginOfUrl(const std::string& url) {
    return GetUrlLogin(url.substr(0, pathBegin(url)));
}

std::string urlWithoutLogin(const std::string& url) {
    const std::size_t path = pathBegin(url);
    return GetUrlPlace(url.substr(0, path)) + url.substr(path);
}

bool hasHost(const std::string& url) {
    const std::string place = urlWithoutLogin(url);
    const std::size_t begin = hostBegin(place);
    const std::string host = place.substr(begin, pathBegin(place) - begin);
    const std::size_t port = std::min(host.find(':', host.rfind(']') + 1), host.size());
    return port > 0 && begin > 0 &&
           host.find_first_not_of(":0123456789", port) == std::string::npos;
}

std::string encodeFtpUrl(const std::string& url) {
    const std::size_t path = pathBegin(url);
    if (!url.starts_with(kScheme) || hasControlCharacter(url)) {
        throw EXC(tFtpConnection::InvalidPath) % urlWithoutLogin(url);
    }
    return url.substr(0, path) + encodeComponents(url.substr(path));
}

std::string parentUrl(const std::string& url) { return url.substr(0, url.rfind('/') + 1); }

std::string rootUrl(const std::string& url) { return url.substr(0, pathBegin(url) + 1); }

}  // namespace zelvo
