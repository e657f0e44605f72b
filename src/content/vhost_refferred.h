// The content of a domain's virtual host: its own, and that of its subdomains, web users and site
// applications.
#pragma once

#include <string>

#include "content/refferred_collection.h"

namespace zelvo {

// A part of a virtual host.
class Vhost_Refferred : public RefferredCid {
  public:
    // A site application, as far as its content needs to know it.
    struct Application {
        std::string name;
        std::string subPath;
        // It stands below the secure document root.
        bool isSecure = false;
    };

    // node: the object's element. owner: name of the system user, as the dump has it.
    // secondName: the subdomain in whose directory the part stands, in UTF-8.
    Vhost_Refferred(const XmlNode& node, const std::string& cidType, std::string ownerName,
                    std::string subdomainName = "", bool isOfSubdomain = false);

    std::string owner;
    std::string subdomain;
    bool isSubdomain;
    Application application;
};

// Collects the content of one virtual host.
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

  protected:
    void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                      const ContentUnpacker::Paths& includes) override;
    void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) override;
    void finishPart(const RefferredCid& cid) override;

  private:
    std::string domainName_;
    std::string systemUser_;
};

}  // namespace zelvo
