// Who owns which content, and where it goes.
#include <sys/stat.h>

#include "commons/errors.h"
#include "commons/files.h"
#include "content/accounts.h"
#include "content/beneath.h"
#include "content/content_errors.h"
#include "content/content_unpacker.h"
#include "content/destination.h"

namespace zelvo {

using namespace accounts;
using Paths = ContentUnpacker::Paths;

namespace {

constexpr mode_t kSharedMode = 0770;

// What the panel takes from the temporary directory.
std::string inTmpDir(const std::string& path) { return files::getTmpDir() + "/" + path; }

// The one file that was unpacked into the temporary directory. The panel's utilities open it as
// root, so a link to a file of this server is none.
const std::string& onlyFile(const Paths& paths, const char* assertion) {
    if (paths.size() != 1) {
        throw EXC(AssertionFailed) % assertion;
    }
    if (typeBeneath(files::getTmpDir(), paths.front()) != S_IFREG) {
        throw EXC(UnExpectedResult) % "the archive does not hold one file";
    }
    return paths.front();
}

}  // namespace

void ContentUnpacker::extractDomainVhost(const Cid& cid, const std::string& destination,
                                         const Paths& includes, const std::string& owner,
                                         Paths& result) {
    result = untar(cid, destination, includes, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractDomainWhole(const Cid& cid, const std::string& destination,
                                          const std::string& owner) {
    return untar(cid, destination, owner, kCustomers, kHostingMode);
}

Paths ContentUnpacker::extractDomainMailList(const Cid& cid, const std::string& /*name*/,
                                             const Paths& includes) {
    return untar(cid, getListArchivesDir(), includes, kMailList, kMailList, 0);
}

Paths ContentUnpacker::extractDomainDocRoot(const Cid& cid, const std::string& domain,
                                            const std::string& destination,
                                            const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid_with_fp(cid, domain, destination, offset, owner, kCustomers);
}

Paths ContentUnpacker::extractDomainDocRootSSL(const Cid& cid, const std::string& domain,
                                               const std::string& destination,
                                               const std::string& owner,
                                               const std::string& offset) {
    return unpack_hosting_cid_with_fp(cid, domain, destination, offset, owner, kCustomers);
}

Paths ContentUnpacker::extractDomainCgi(const Cid& cid, const std::string& destination,
                                        const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers);
}

Paths ContentUnpacker::extractDomainWebStat(const Cid& cid, const std::string& destination,
                                            const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kRootGroup);
}

Paths ContentUnpacker::extractDomainWebStatSSL(const Cid& cid, const std::string& destination,
                                               const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kRootGroup);
}

Paths ContentUnpacker::extractDomainFtpStat(const Cid& cid, const std::string& destination,
                                            const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kRootGroup);
}

Paths ContentUnpacker::extractDomainAnonFtpStat(const Cid& cid, const std::string& destination,
                                                const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kRootGroup);
}

Paths ContentUnpacker::extractDomainErrorDocs(const Cid& cid, const std::string& destination,
                                              const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kWebServer);
}

Paths ContentUnpacker::extractDomainLogs(const Cid& cid, const std::string& destination,
                                         const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kWebServer);
}

Paths ContentUnpacker::extractDomainPrivate(const Cid& cid, const std::string& destination,
                                            const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers);
}

Paths ContentUnpacker::extractDomainPublicAnonFtp(const Cid& cid, const std::string& destination,
                                                  const std::string& owner,
                                                  const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers);
}

Paths ContentUnpacker::extractDomainIncomingAnonFtp(const Cid& cid, const std::string& destination,
                                                    const std::string& owner,
                                                    const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kFtpUploads);
}

Paths ContentUnpacker::extractDomainConf(const Cid& cid, const std::string& destination,
                                         const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kRootGroup, 0);
}

Paths ContentUnpacker::extractSubDomainConf(const Cid& cid, const std::string& destination,
                                            const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kWebServer, 0);
}

Paths ContentUnpacker::extractSubDomainDocRoot(const Cid& cid, const std::string& destination,
                                               const std::string& owner,
                                               const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractSubDomainDocRootSSL(const Cid& cid, const std::string& destination,
                                                  const std::string& owner,
                                                  const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractSubDomainCgiBin(const Cid& cid, const std::string& destination,
                                              const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractWebUserContent(const Cid& cid, const std::string& destination,
                                             const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractSiteAppHttpDocs(const Cid& cid, const std::string& destination,
                                              const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractSiteAppCgiBin(const Cid& cid, const std::string& destination,
                                            const std::string& owner, const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, owner, kCustomers, 0);
}

Paths ContentUnpacker::extractSiteAppScripts(const Cid& cid, const std::string& destination,
                                             const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kCustomers, 0);
}

Paths ContentUnpacker::extractSiteAppHttpsScripts(const Cid& cid, const std::string& destination,
                                                  const std::string& offset) {
    return unpack_hosting_cid(cid, destination, offset, kRoot, kCustomers, 0);
}

Paths ContentUnpacker::extractAutoResponder(const Cid& cid, const std::string& name,
                                            const std::string& subName, const std::string& offset) {
    return unpack_hosting_cid(cid, inTmpDir(name + "/" + subName), offset, kPanel, kPanel,
                              kSharedMode);
}

Paths ContentUnpacker::extractMailManContent(const Cid& cid, const std::string& /*domain*/,
                                             const std::string& listName,
                                             const std::string& offset) {
    return unpack_hosting_cid(cid, getListMboxDir(listName), offset, kMailList, kMailList, 0);
}

std::string ContentUnpacker::extractIcons(const Cid& cid) {
    return onlyFile(untar(cid, files::getTmpDir(), kRoot, kRootGroup, 0), "iconFiles.size() == 1");
}

std::string ContentUnpacker::extractPrivateKey(const Cid& cid) {
    return onlyFile(untar(cid, files::getTmpDir(), kPanel, kPanel, 0), "private_keys.size() == 1");
}

std::string ContentUnpacker::extractSiteAppDistr(const Cid& cid) {
    return onlyFile(untar(cid, files::getTmpDir(), kPanel, kPanel, 0), "packageFiles.size() == 1");
}

std::string ContentUnpacker::extractTomCatApp(const Cid& cid) {
    return onlyFile(untar(cid, files::getTmpDir(), kPanel, kPanel, 0),
                    "tomcatApplicationFiles.size() == 1");
}

}  // namespace zelvo
