// Names of options that a dump brings along.
#pragma once

#include <initializer_list>
#include <string>

namespace zelvo {

// Returns the name if it can stand behind a "-" as an option: ASCII letters, digits, "-" and "_"
// with a letter in front. what: whose name it is, for the message. taken: options that are not the
// dump's to say. Raises UnsafeName.
const std::string& requireOptionName(const std::string& name, const std::string& what,
                                     std::initializer_list<const char*> taken);

// The same for contact data, limits and permissions of an account. Who it is, whose it is and how
// it is entered have places of their own in a dump. Raises UnsafeName.
const std::string& requireAccountOption(const std::string& name, const std::string& what);

}  // namespace zelvo
