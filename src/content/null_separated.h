// Lists of names in the form in which no name needs quoting.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// Splits a text at its zero bytes. There is always one string more than there are zero bytes, so an
// empty text gives one empty string.
std::vector<std::string> parse_nullseparated(const std::string& text);

}  // namespace zelvo
