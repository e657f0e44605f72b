// Percent-encoding (RFC 3986).
#pragma once

#include <string>

namespace zelvo {

// The text with all its bytes encoded but the unreserved ones, and back up to the first zero byte.
std::string urlencode(const std::string& text);
std::string urldecode(const std::string& text);

}  // namespace zelvo
