#include "deployer/content_source.h"

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

}  // namespace zelvo
