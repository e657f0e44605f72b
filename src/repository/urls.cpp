#include "repository/urls.h"

#include "repository/repository_errors.h"

namespace zelvo {

namespace {

// The length of the scheme with "://"; 0 if there is none.
std::size_t schemeLength(const std::string& url) {
    const auto mark = url.find("://");
    return mark == std::string::npos ? 0 : mark + 3;
}

// The place of the "@" behind the login; npos if there is none. A password may hold one itself.
std::size_t loginEnd(const std::string& url) {
    const auto at = url.rfind('@');
    return at != std::string::npos && at >= schemeLength(url) ? at : std::string::npos;
}

}  // namespace

std::string GetUrlLogin(const std::string& url) {
    const auto end = loginEnd(url);
    const auto start = schemeLength(url);
    return end == std::string::npos ? "" : url.substr(start, end - start);
}

std::string GetUrlPlace(const std::string& url) {
    const auto end = loginEnd(url);
    if (end == std::string::npos) {
        return url;
    }
    return end + 1 == url.size() ? "" : url.substr(0, schemeLength(url)) + url.substr(end + 1);
}

void DecomposeUrl(const std::string& url, std::string& base, std::string& name) {
    const auto slash = url.rfind('/');
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    base = url.substr(0, start);
    name = url.substr(start);
}

void DecomposeUrls(const std::vector<std::string>& urls, std::string& base,
                   std::vector<std::string>& names) {
    std::string first;
    std::vector<std::string> found;
    for (const std::string& url : urls) {
        std::string own;
        DecomposeUrl(url, own, found.emplace_back());
        if (found.size() > 1 && own != first) {
            throw EXC(UrleDecomposingError) % "urls have diffrent base dirs";
        }
        first = own;
    }
    base = first;
    names = found;
}

}  // namespace zelvo
