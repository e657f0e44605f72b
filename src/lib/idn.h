// International domain names (IDNA2003, RFC 3490): UTF-8 to ASCII and back, whatever the locale.
#pragma once

#include <string>

#include "lib/idn_error.h"

// The plain functions return a new string that the caller frees, or null with the result of libidn
// in idn_errno. Without memory they report "Allocation failed" and end the process with code 1.

// As idn::toAscii below.
char* idn_toascii(const char* name);

// As idn::toUtf8 below.
char* idn_toutf8(const char* name);

// Returns a mail address with the ASCII form of the domain, which is what stands behind the first
// "@"; what stands before it is not touched. Null, with idn_errno as it was, without an "@".
char* idn_email_toascii(const char* address);

// The same, but what would be null is reported and ends the process with code 1.
char* idn_toascii_safe(const char* name);
char* idn_toutf8_safe(const char* name);
char* idn_email_toascii_safe(const char* address);

namespace zelvo::idn {

// Returns the ASCII form (RFC 3490, ToASCII for each label) of a domain name in UTF-8, in lower
// case. Raises IdnaError for a name that has no such form, std::bad_alloc without memory.
std::string toAscii(const std::string& name);

// Returns the UTF-8 form (RFC 3490, ToUnicode for each label) of a domain name. A label that cannot
// be decoded stays as it is. Raises IdnaError for what is not UTF-8, std::bad_alloc without memory.
std::string toUtf8(const std::string& name);

// Returns a mail address with the ASCII form of what stands behind the first "@"; without an "@"
// the text as it is. Raises what toAscii raises.
std::string emailToAscii(const std::string& address);

}  // namespace zelvo::idn
