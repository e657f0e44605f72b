// The customers' accounts of the operating system that own content.
#pragma once

#include <string>

namespace zelvo {

// The account that a name of a dump means: the name as it stands if the system knows it, otherwise
// its lower-case form, in which the panel makes new ones. Raises UnsuitableOwner when there is
// neither, and for an account that no customer can have: root, those of the system and of the
// panel itself, and whatever a program would take for an option.
std::string contentOwner(const std::string& name);

}  // namespace zelvo
