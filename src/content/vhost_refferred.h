// The content of a domain's virtual host: its own, and that of its subdomains, web users and site
// applications.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "content/refferred_collection.h"
#include "content/vhost_rows.h"

namespace zelvo {

// A site application, as far as its content needs to know it.
struct SiteApplication {
    // The identifier that the panel has given it.
    std::string id;
    // Name, version and release, as the panel's tools take them.
    std::string fullName;
    // Its directory below the document root; empty for the root itself.
    std::string subPath;
    // It stands below the secure document root.
    bool isSecure = false;
};

// The directory below the document root. Raises UnsafeName for one that is not below it.
const std::string& safeSubPath(const SiteApplication& application);

// A part of a virtual host.
class Vhost_Refferred : public RefferredCid {
  public:
    // node: the object's element. contentRow: the kind of content, which lives as long as the
    // program. ownerName: of the system user, as the dump has it. subdomainName: in UTF-8, of the
    // one in whose directory the part stands.
    Vhost_Refferred(const XmlNode& node, const VhostRow& contentRow, std::string ownerName,
                    std::optional<std::string> subdomainName, SiteApplication siteApplication);

    const VhostRow& row;
    std::string owner;
    std::optional<std::string> subdomain;
    SiteApplication application;
};

// Collects the content of one virtual host. System users are looked up when their content is
// unpacked.
class DomainVHostRefferred : public RefferredCidCollection {
  public:
    // hosting: the element of the hosting. domainName: in UTF-8. systemUser: name of the system
    // user of the domain, as the dump has it; may be empty.
    DomainVHostRefferred(const XmlNode& hosting, std::string domainName, std::string systemUser);

    // The document roots, statistics and other directories of the domain itself.
    void addDomainVhost(const XmlNode& hosting);
    // name: the part before the domain, in UTF-8. owner: its system user or that of the domain.
    void addSubDomain(const XmlNode& subdomain, const std::string& name, const std::string& owner);
    void addDomainWebUser(const XmlNode& webuser, const std::string& login);
    void addDomainAnonFtp(const XmlNode& anonftp, const std::string& owner);
    // node: the element of the installed application. subdomain: as in addSubDomain, if it is
    // installed on one. owner: the system user of the domain or subdomain.
    void addSiteApp(const XmlNode& node, const SiteApplication& application,
                    const std::optional<std::string>& subdomain, const std::string& owner);

  protected:
    void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                      const ContentUnpacker::Paths& includes) override;
    void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    void finishPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    Failure failureOf(const RefferredCid& cid) const override;

  private:
    void addParts(const XmlNode& node, std::span<const VhostRow> rows, const std::string& owner,
                  const std::optional<std::string>& subdomain = std::nullopt,
                  const SiteApplication& application = {});
    // The directory of the domain, or of the part's subdomain in it.
    std::string directoryOf(const Vhost_Refferred& part) const;
    // Tells the panel's tools that the control scripts of an application are in place. A failure
    // goes to the debug log only.
    void fixUpSiteApp(const Vhost_Refferred& part) const;
    void updatePermissions(const Vhost_Refferred& part) const;

    std::string domainName_;
    std::string systemUser_;
};

}  // namespace zelvo
