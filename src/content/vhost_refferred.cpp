#include "content/vhost_refferred.h"

#include <memory>
#include <utility>

#include "commons/errors.h"
#include "content/content_owner.h"
#include "content/destination.h"

namespace zelvo {

Vhost_Refferred::Vhost_Refferred(const XmlNode& node, const std::string& cidType,
                                 std::string ownerName, std::string subdomainName,
                                 bool isOfSubdomain)
    : RefferredCid(node, cidType),
      owner(std::move(ownerName)),
      subdomain(std::move(subdomainName)),
      isSubdomain(isOfSubdomain) {}

DomainVHostRefferred::DomainVHostRefferred(const XmlNode& hosting, std::string domainName,
                                           std::string systemUser)
    : RefferredCidCollection(hosting, "vhost",
                             {"Going to unpack domain content",
                              "Going to unpack domain vhost content with restored objects",
                              "Finished unpacking domain content"}),
      domainName_(std::move(domainName)),
      systemUser_(std::move(systemUser)) {}

void DomainVHostRefferred::addDomainVhost(const XmlNode& hosting) {
    for (const char* type :
         {"docroot", "conf", "docroot_ssl", "cgi", "webstat", "webstat_ssl", "ftpstat",
          "error_docs", "private", "admin_private", "logs", "anon_ftpstat"}) {
        addToExtract(std::make_unique<Vhost_Refferred>(hosting, type, systemUser_));
    }
}

void DomainVHostRefferred::addSubDomain(const XmlNode& subdomain, const std::string& name,
                                        const std::string& owner) {
    for (const char* type : {"docroot", "conf", "docroot_ssl", "cgi"}) {
        addToExtract(std::make_unique<Vhost_Refferred>(subdomain, type, owner, name, true));
    }
}

void DomainVHostRefferred::addDomainWebUser(const XmlNode& webuser, const std::string& login) {
    for (const char* type : {"webuser_home", "webuser_private"}) {
        addToExtract(std::make_unique<Vhost_Refferred>(webuser, type, login));
    }
}

void DomainVHostRefferred::addDomainAnonFtp(const XmlNode& anonftp, const std::string& owner) {
    for (const char* type : {"ftp_pub", "ftp_incoming"}) {
        addToExtract(std::make_unique<Vhost_Refferred>(anonftp, type, owner));
    }
}

void DomainVHostRefferred::extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                                        const ContentUnpacker::Paths& includes) {
    ContentUnpacker::Paths result;
    unpacker.extractDomainVhost(whole, getVhostDir(domainName_), includes,
                                contentOwner(systemUser_), result);
}

void DomainVHostRefferred::extractPart(ContentUnpacker&, const RefferredCid&) {
    throw EXC(NotSupportedOperation) % "content";
}

void DomainVHostRefferred::finishPart(const RefferredCid&) {}

}  // namespace zelvo
