// Text beyond ASCII in mail headers: encoded words (RFC 1522, RFC 2047).
#pragma once

#include <string>

namespace zelvo::rfc1522 {

// Returns the text, which is in UTF-8, in ASCII. A text of plain characters stays as it is; any
// other becomes encoded words in Q encoding with a blank between them, each of at most 75 bytes and
// of whole characters. decode gives the text back.
std::string encode(const std::string& text);

// Returns the text in UTF-8: each encoded word becomes what it stands for, "?" for bytes that its
// character set does not have, and blanks between two of them go. What stands behind an encoded
// word without a blank stays there. A broken encoded word stays as it is. Raises std::runtime_error
// for a character set that iconv does not know.
std::string decode(const std::string& text);

}  // namespace zelvo::rfc1522
