// URLs with an international domain name in them.
#pragma once

// Returns the URL, "[ftp://|http://|https://][LOGIN@]HOST[REST]", with the ASCII form of the host
// as idn_toascii gives it, in a static buffer of 4096 bytes that the next call overwrites. Null,
// and a line in the log, for a text without a host, for a host that has no such form, and for a URL
// that does not fit the buffer: cut, it would name something else.
const char* idn_url_toascii(const char* url);
