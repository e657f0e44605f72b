// The kinds of content of a virtual host: where each goes, who owns it and what its loss is called.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "content/content_unpacker.h"

namespace zelvo {

class Vhost_Refferred;

// What the operation of a row is given.
struct VhostTask {
    ContentUnpacker& unpacker;
    const Vhost_Refferred& part;
    // In UTF-8.
    const std::string& domain;
    const std::string& destination;
};

struct VhostRow {
    // The type word in the dump.
    const char* type;
    // The place below the directory of the domain or subdomain: a path, for some rows a name behind
    // it, and what follows that. The name raises UnsafeName, or UnsuitableOwner where it is that of
    // the owner.
    const char* path;
    std::string (*name)(const Vhost_Refferred&);
    const char* end;
    // Raises UnsuitableOwner, and what the operations of the unpacker raise.
    void (*unpack)(const VhostTask&);
    // domain: in UTF-8.
    std::unique_ptr<ExTaggedIncludable> (*failure)(const Vhost_Refferred&,
                                                   const std::string& domain);
};

// The place of a part of this row. directory: of the domain or subdomain. Raises what the name of
// the row raises.
std::string placeOf(const VhostRow& row, const Vhost_Refferred& part, const std::string& directory);

// The rows of each object, in the order in which its content is unpacked.
std::span<const VhostRow> domainRows();
std::span<const VhostRow> subdomainRows();
std::span<const VhostRow> webUserRows();
std::span<const VhostRow> anonFtpRows();
// The control scripts come first.
std::span<const VhostRow> siteAppRows();

}  // namespace zelvo
