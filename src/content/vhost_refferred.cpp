#include "content/vhost_refferred.h"

#include <memory>
#include <utility>

#include "commons/files.h"
#include "content/content_failure.h"
#include "content/content_owner.h"
#include "content/destination.h"
#include "content/unsafe_name.h"
#include "exec/cli_exec.h"
#include "report/debug_log.h"
#include "report/guard.h"

namespace zelvo {

namespace {

const Vhost_Refferred& partOf(const RefferredCid& cid) {
    return static_cast<const Vhost_Refferred&>(cid);
}

}  // namespace

const std::string& safeSubPath(const SiteApplication& application) {
    const std::string& path = application.subPath;
    return path.empty() ? path : requireDescent(path, "a site application's directory");
}

Vhost_Refferred::Vhost_Refferred(const XmlNode& node, const VhostRow& contentRow,
                                 std::string ownerName, std::optional<std::string> subdomainName,
                                 SiteApplication siteApplication)
    : RefferredCid(node, contentRow.type),
      row(contentRow),
      owner(std::move(ownerName)),
      subdomain(std::move(subdomainName)),
      application(std::move(siteApplication)) {}

DomainVHostRefferred::DomainVHostRefferred(const XmlNode& hosting, std::string domainName,
                                           std::string systemUser)
    : RefferredCidCollection(hosting, "vhost",
                             {"Going to unpack domain content",
                              "Going to unpack domain vhost content with restored objects",
                              "Finished unpacking domain content"}),
      domainName_(std::move(domainName)),
      systemUser_(std::move(systemUser)) {}

void DomainVHostRefferred::addDomainVhost(const XmlNode& hosting) {
    addParts(hosting, domainRows(), systemUser_);
}

void DomainVHostRefferred::addSubDomain(const XmlNode& subdomain, const std::string& name,
                                        const std::string& owner) {
    addParts(subdomain, subdomainRows(), owner, name);
}

void DomainVHostRefferred::addDomainWebUser(const XmlNode& webuser, const std::string& login) {
    addParts(webuser, webUserRows(), login);
}

void DomainVHostRefferred::addDomainAnonFtp(const XmlNode& anonftp, const std::string& owner) {
    addParts(anonftp, anonFtpRows(), owner);
}

void DomainVHostRefferred::addSiteApp(const XmlNode& node, const SiteApplication& application,
                                      const std::optional<std::string>& subdomain,
                                      const std::string& owner) {
    addParts(node, siteAppRows(), owner, subdomain, application);
}

void DomainVHostRefferred::addParts(const XmlNode& node, std::span<const VhostRow> rows,
                                    const std::string& owner,
                                    const std::optional<std::string>& subdomain,
                                    const SiteApplication& application) {
    for (const VhostRow& row : rows) {
        addToExtract(std::make_unique<Vhost_Refferred>(node, row, owner, subdomain, application));
    }
}

void DomainVHostRefferred::extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                                        const ContentUnpacker::Paths& includes) {
    ContentUnpacker::Paths result;
    unpacker.extractDomainVhost(whole, getVhostDir(domainName_), includes,
                                contentOwner(systemUser_), result);
    requireUnpacked(result);
}

void DomainVHostRefferred::extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) {
    const Vhost_Refferred& part = partOf(cid);
    const std::string destination = placeOf(part.row, part, directoryOf(part));
    requireUnpackedBelow(getVhostDir(domainName_), destination, part.offset);
    part.row.unpack({unpacker, part, domainName_, destination});
    finishPart(unpacker, part);
}

void DomainVHostRefferred::finishPart(ContentUnpacker& /*unpacker*/, const RefferredCid& cid) {
    if (cid.type == siteAppRows().front().type) {
        fixUpSiteApp(partOf(cid));
    }
}

RefferredCidCollection::Failure DomainVHostRefferred::failureOf(const RefferredCid& cid) const {
    return partOf(cid).row.failure(partOf(cid), domainName_);
}

std::string DomainVHostRefferred::directoryOf(const Vhost_Refferred& part) const {
    const std::string directory = getVhostDir(domainName_);
    return part.subdomain ? getSubdomainDir(directory, *part.subdomain) : directory;
}

void DomainVHostRefferred::fixUpSiteApp(const Vhost_Refferred& part) const {
    const std::string& id = part.application.id;
    const std::string which = "'" + part.application.fullName + "' on domain '" + domainName_ +
                              "'. This is not fatal error";
    if (!debugLogged([&] {
            CliExec registrar(files::getDirectCliUtilityPath("siteapp-registrar"));
            registrar << "--fixup" << requireNoOption(id, "a site application");
            registrar.exec();
        })) {
        theDebugLog->log("Cannot fix up site application " + which + "!");
    }
    if (!debugLogged([&] { updatePermissions(part); })) {
        theDebugLog->log("Cannot update site application permissions " + which +
                         ", but this site application can have wrong work!");
    }
}

void DomainVHostRefferred::updatePermissions(const Vhost_Refferred& part) const {
    tLogExecCmd manager(files::getZelvoUtilityPath("sappmng"));
    manager << "--update-application-permissions"
            << "--application-full-name=" + part.application.fullName
            << "--vhost-path=" + directoryOf(part) << "--user-name=" + contentOwner(part.owner)
            << "--application-subdirectory=" + safeSubPath(part.application);
    if (part.application.isSecure) {
        manager << "--ssl";
    }
    manager.exec();
}

}  // namespace zelvo
