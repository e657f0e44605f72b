// Decoding of base64 (RFC 4648, section 4).
#pragma once

#include <string>

namespace zelvo {

// Returns the bytes that the text stands for. "=" ends the data. A byte outside the alphabet is
// named on standard error and skipped, so a line break costs a message and no data. Bits that do
// not make a whole byte are dropped.
std::string base64_decode(const std::string& text);

}  // namespace zelvo
