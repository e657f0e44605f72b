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
};

}  // namespace zelvo
