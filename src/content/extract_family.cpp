// Who owns which content, and where it goes.
#include <sys/stat.h>

#include <memory>
#include <utility>

#include "commons/errors.h"
#include "commons/files.h"
#include "content/accounts.h"
#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/content_unpacker.h"
#include "content/destination.h"
#include "content/unpack_directory.h"
#include "exec/beneath.h"

namespace zelvo {

using namespace accounts;
using Paths = ContentUnpacker::Paths;

namespace {

constexpr mode_t kSharedMode = 0770;

// What the panel takes from the temporary directory.
std::string inTmpDir(const std::string& path) { return files::getTmpDir() + "/" + path; }

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

Paths ContentUnpacker::extractDomainMailList(const Cid& cid, const std::string& destination,
                                             const Paths& includes) {
    return untar(cid, destination, includes, kMailList, kMailList, 0);
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

UnpackedFile ContentUnpacker::extractFile(const Cid& cid, const std::string& user,
                                          const std::string& group, const char* assertion) {
    auto directory = std::make_unique<UnpackDirectory>(files::getTmpDir());
    directory->openToPanel();
    Paths paths;
    refuseNamelessMembers([&] { paths = untar(cid, directory->path(), user, group, 0); });
    if (paths.size() != 1) {
        throw EXC(AssertionFailed) % assertion;
    }
    // The panel's utilities open it as root, so a link to a file of this server is none.
    if (typeBeneath(directory->path(), paths.front()) != S_IFREG) {
        throw EXC(UnExpectedResult) % "the archive does not hold one file";
    }
    return {std::move(directory), paths.front()};
}

UnpackedFile ContentUnpacker::extractIcons(const Cid& cid) {
    return extractFile(cid, kRoot, kRootGroup, "iconFiles.size() == 1");
}

UnpackedFile ContentUnpacker::extractPrivateKey(const Cid& cid) {
    return extractFile(cid, kPanel, kPanel, "private_keys.size() == 1");
}

UnpackedFile ContentUnpacker::extractSiteAppDistr(const Cid& cid) {
    return extractFile(cid, kPanel, kPanel, "packageFiles.size() == 1");
}

UnpackedFile ContentUnpacker::extractTomCatApp(const Cid& cid) {
    return extractFile(cid, kPanel, kPanel, "tomcatApplicationFiles.size() == 1");
}

}  // namespace zelvo
