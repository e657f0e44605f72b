// The characters that an XML 1.0 document can hold.
#pragma once

#include <string>

namespace zelvo {

// The text in a form that a document can hold, as UTF-8. Failures quote the output of foreign
// programs, and a document with one control character or stray byte in it cannot be read back as a
// whole. A byte that is not UTF-8 is taken as ISO-8859-1; a character that XML 1.0 forbids (a
// control character, a surrogate, U+FFFE, U+FFFF) becomes U+FFFD.
std::string toXmlText(const std::string& text);

}  // namespace zelvo
