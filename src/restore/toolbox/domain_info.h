// What the deployers of the objects inside a domain know of it.
#pragma once

#include <string>

namespace zelvo {

struct DomainInfo {
    // In UTF-8.
    std::string name;
    // Login of the owning account, or "admin".
    std::string owner;
    // The IP address of its hosting; empty if the dump has none.
    std::string address;
    // The address belongs to one account alone.
    bool hasExclusiveAddress = false;
    // The directory of its virtual host, and the system user that owns what is in it, by its name
    // in the dump. Empty where the domain has no hosting of its own.
    std::string vhostDir = {};
    std::string systemUser = {};
};

}  // namespace zelvo
