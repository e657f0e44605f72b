// The versions of the panel's components, for deployers.
#pragma once

#include <string>

namespace zelvo {

// The version of a package of the panel, such as "mysql", read from the panel's database each time
// and cut to 4095 bytes. Raises CantReadPkgVersion when it cannot be read: that is the failure of
// the object that needs it and not the end of the run.
std::string getPkgVersion(const std::string& name);

}  // namespace zelvo
