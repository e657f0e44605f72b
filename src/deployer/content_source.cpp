#include "deployer/content_source.h"

#include "exec/url_encoding.h"
#include "repository/ftp_url.h"

namespace zelvo {

namespace {

// What stands before the last "/", empty if nothing does.
std::string directoryOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

}  // namespace

std::string chooseRepositoryPath(const std::string& repositoryUrl, const XmlNode& dumpRoot,
                                 const std::string& sessionPath) {
    if (!repositoryUrl.empty()) {
        return repositoryUrl;
    }
    const std::string base = dumpRoot.test("@base") ? directoryOf(dumpRoot.str("@base")) : "";
    return base.empty() ? sessionPath : base;
}

std::unique_ptr<tRepository> openRepository(const std::string& path, const std::string& login,
                                            const std::string& password) {
    if (!path.starts_with("ftp://")) {
        return std::make_unique<tRepository>(path, login, password, "", false);
    }
    if (!hasHost(path)) {
        // A part of the password could stand where the place is told.
        throw EXC(RepositoryError) %
            "the URL of the repository has no host, or a login that is not percent-encoded";
    }
    const std::string own = login.empty() ? loginOfUrl(path) : "";
    const std::size_t colon = own.find(':');
    const std::string ownPassword =
        colon == std::string::npos ? "" : urldecode(own.substr(colon + 1));
    return std::make_unique<tRepository>(urlWithoutLogin(path),
                                         login.empty() ? urldecode(own.substr(0, colon)) : login,
                                         password.empty() ? ownPassword : password, "", false);
}

}  // namespace zelvo
