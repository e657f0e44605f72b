#include "content/vhost_rows.h"

#include "content/content_errors.h"
#include "content/content_failure.h"
#include "content/content_owner.h"
#include "content/unsafe_name.h"
#include "content/vhost_refferred.h"

namespace zelvo {

namespace {

using U = ContentUnpacker;

// ---- The names behind a path.

std::string nothing(const Vhost_Refferred&) { return ""; }

// The account, whose home has its name.
std::string user(const Vhost_Refferred& part) {
    const std::string name = contentOwner(part.owner);
    return requireComponent(name, "a directory of a user");
}

std::string application(const Vhost_Refferred& part) {
    return requireComponent(part.application.id, "a site application");
}

std::string subPath(const Vhost_Refferred& part) { return safeSubPath(part.application); }

std::string subPathInRoot(const Vhost_Refferred& part) {
    return (part.application.isSecure ? "httpsdocs/" : "httpdocs/") + subPath(part);
}

// ---- The operations: with an owner and the domain, with an owner, and with one of the system.

template <auto operation>
void site(const VhostTask& task) {
    requireUnpacked((task.unpacker.*operation)(task.part, task.domain, task.destination,
                                               contentOwner(task.part.owner), task.part.offset));
}

template <auto operation>
void owned(const VhostTask& task) {
    requireUnpacked((task.unpacker.*operation)(task.part, task.destination,
                                               contentOwner(task.part.owner), task.part.offset));
}

template <auto operation>
void fixed(const VhostTask& task) {
    requireUnpacked((task.unpacker.*operation)(task.part, task.destination, task.part.offset));
}

// ---- The failures: of a domain, and of what stands in it.

template <void (&tag)(bool)>
std::unique_ptr<ExTaggedIncludable> ofDomain(const Vhost_Refferred&, const std::string& domain) {
    return std::make_unique<Exc<&tag>>(EXC(tag) % domain);
}

template <void (&tag)(bool)>
std::unique_ptr<ExTaggedIncludable> ofSubdomain(const Vhost_Refferred& part,
                                                const std::string& domain) {
    return std::make_unique<Exc<&tag>>(EXC(tag) % part.subdomain.value_or("") % domain);
}

template <void (&tag)(bool)>
std::unique_ptr<ExTaggedIncludable> ofUser(const Vhost_Refferred& part, const std::string& domain) {
    return std::make_unique<Exc<&tag>>(EXC(tag) % part.owner % domain);
}

constexpr VhostRow kDomain[] = {
    {"docroot", "/httpdocs", nothing, "", site<&U::extractDomainDocRoot>,
     ofDomain<CantUnpackDomainDocroot>},
    {"conf", "/conf", nothing, "", fixed<&U::extractDomainConf>, ofDomain<CantUnpackDomainContent>},
    {"docroot_ssl", "/httpsdocs", nothing, "", site<&U::extractDomainDocRootSSL>,
     ofDomain<CantUnpackDomainDocrootSsl>},
    {"cgi", "/cgi-bin", nothing, "", owned<&U::extractDomainCgi>, ofDomain<CantUnpackDomainCgi>},
    {"webstat", "/statistics/webstat", nothing, "", fixed<&U::extractDomainWebStat>,
     ofDomain<CantUnpackWebstat>},
    {"webstat_ssl", "/statistics/webstat-ssl", nothing, "", fixed<&U::extractDomainWebStatSSL>,
     ofDomain<CantUnpackWebstat>},
    {"ftpstat", "/statistics/ftpstat", nothing, "", fixed<&U::extractDomainFtpStat>,
     ofDomain<CantUnpackFtpstat>},
    {"error_docs", "/error_docs", nothing, "", owned<&U::extractDomainErrorDocs>,
     ofDomain<CantUnpackErrorDocs>},
    {"private", "/private", nothing, "", owned<&U::extractDomainPrivate>,
     ofDomain<CantUnpackPrivateData>},
    {"admin_private", "/private/", user, "", owned<&U::extractDomainPrivate>,
     ofDomain<CantUnpackPrivateData>},
    {"logs", "/statistics/logs", nothing, "", fixed<&U::extractDomainLogs>,
     ofDomain<CantUnpackLogs>},
    {"anon_ftpstat", "/statistics/anon_ftpstat", nothing, "", fixed<&U::extractDomainAnonFtpStat>,
     ofDomain<CantUnpackFtpstat>},
};

constexpr VhostRow kSubdomain[] = {
    {"docroot", "/httpdocs", nothing, "", owned<&U::extractSubDomainDocRoot>,
     ofSubdomain<CantUnpackSubdomainDocroot>},
    {"conf", "/conf", nothing, "", fixed<&U::extractSubDomainConf>,
     ofSubdomain<CantUnpackSubdomainConf>},
    {"docroot_ssl", "/httpsdocs", nothing, "", owned<&U::extractSubDomainDocRootSSL>,
     ofSubdomain<CantUnpackSubdomainDocrootSsl>},
    {"cgi", "/cgi-bin", nothing, "", owned<&U::extractSubDomainCgiBin>,
     ofSubdomain<CantUnpackSubdomainCgi>},
};

constexpr VhostRow kWebUser[] = {
    {"webuser_home", "/web_users/", user, "", owned<&U::extractWebUserContent>,
     ofUser<CantUnpackWebuserContent>},
    {"webuser_private", "/web_users/", user, "/private/", owned<&U::extractWebUserContent>,
     ofUser<CantUnpackWebuserContent>},
};

constexpr VhostRow kAnonFtp[] = {
    {"ftp_pub", "/anon_ftp/pub", nothing, "", owned<&U::extractDomainPublicAnonFtp>,
     ofDomain<CantUnpackDomainPublicAnonFtp>},
    {"ftp_incoming", "/anon_ftp/incoming", nothing, "", owned<&U::extractDomainIncomingAnonFtp>,
     ofDomain<CantUnpackDomainPublicAnonFtp>},
};

constexpr VhostRow kSiteApp[] = {
    {"sapp-scripts", "/vault_scripts/", application, "", fixed<&U::extractSiteAppScripts>,
     ofDomain<CantUnpackDomainContent>},
    {"sapp-https-scripts", "/vault_https_scripts/", application, "",
     fixed<&U::extractSiteAppHttpsScripts>, ofDomain<CantUnpackDomainContent>},
    {"sapp-cgi-bin", "/cgi-bin/", subPath, "", owned<&U::extractSiteAppCgiBin>,
     ofDomain<CantUnpackDomainContent>},
    {"sapp-htdocs", "/", subPathInRoot, "", owned<&U::extractSiteAppHttpDocs>,
     ofDomain<CantUnpackDomainContent>},
};

}  // namespace

std::string placeOf(const VhostRow& row, const Vhost_Refferred& part,
                    const std::string& directory) {
    return directory + row.path + row.name(part) + row.end;
}

std::span<const VhostRow> domainRows() { return kDomain; }
std::span<const VhostRow> subdomainRows() { return kSubdomain; }
std::span<const VhostRow> webUserRows() { return kWebUser; }
std::span<const VhostRow> anonFtpRows() { return kAnonFtp; }
std::span<const VhostRow> siteAppRows() { return kSiteApp; }

}  // namespace zelvo
