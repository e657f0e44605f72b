// Text on its way into an XML answer.
#pragma once

#include <string>
#include <string_view>

namespace sandbox {

// Escapes markup. Characters that no XML document may hold become "?".
std::string xmlText(std::string_view text);

}  // namespace sandbox
