// Texts from one character encoding to another.
#pragma once

#include <string>

namespace zelvo {

// Returns the text in another encoding.
// from, to: encodings as iconv_open(3) names them.
// tolerant: how to go on at bytes that the encoding does not have or that have no counterpart:
//   true puts a "?" for each such byte; false raises std::runtime_error.
// Raises std::runtime_error for a pair of encodings that iconv does not know.
std::string iconvRecode(const std::string& from, const std::string& to, const std::string& text,
                        bool tolerant);

}  // namespace zelvo
