// The customers' accounts of the operating system that own content.
#pragma once

#include <string>

namespace zelvo {

// The account that a name of a dump means: the name as it stands if the system knows it, otherwise
// its lower-case form, in which the panel makes new ones. Raises UnsuitableOwner when there is
// neither, for whatever a program would take for an option, and for an account that is no
// customer's: root, the panel's own, and any whose group is not the customers' and whose home is
// in no site.
std::string contentOwner(const std::string& name);

}  // namespace zelvo
