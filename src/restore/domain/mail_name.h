// The name of a mail user, in the two forms that its deployers need.
#pragma once

#include <string>

namespace zelvo {

struct MailName {
    // Without the domain: content knows the mail user by it.
    std::string name;
    // In UTF-8.
    std::string domain;

    // As the panel knows the mail user.
    std::string full() const { return name + "@" + domain; }
};

}  // namespace zelvo
