#include "lib/idn.h"

#include <idna.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "lib/liblog.h"
#include "lib/libsafe.h"

namespace {

using Text = std::unique_ptr<char, decltype(&free)>;

// A conversion of libidn that takes UTF-8, whatever the locale.
using Conversion = int (*)(const char* input, char** output, int flags);

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

int toAsciiLower(const char* name, char** ascii, int flags) {
    const int code = idna_to_ascii_8z(name, ascii, flags);
    if (code == IDNA_SUCCESS && *ascii != nullptr) {
        // libidn folds the case of international labels only.
        std::transform(*ascii, *ascii + strlen(*ascii), *ascii, toLower);
    }
    return code;
}

// Returns the result of libidn.
int convert(const char* name, Conversion conversion, Text& converted) {
    char* output = nullptr;
    const int code = conversion(name, &output, 0);
    converted.reset(output);
    return code;
}

char* convertOrNull(const char* name, Conversion conversion) {
    Text converted(nullptr, &free);
    idn_errno = convert(name, conversion, converted);
    if (idn_errno == IDNA_MALLOC_ERROR) {
        messlog2(1, 0, "Allocation failed");
    }
    return idn_errno == IDNA_SUCCESS ? converted.release() : nullptr;
}

std::string convertOrThrow(const std::string& name, Conversion conversion) {
    Text converted(nullptr, &free);
    const int code = convert(name.c_str(), conversion, converted);
    if (code != IDNA_SUCCESS) {
        throw zelvo::idn::IdnaError(code);
    }
    if (converted == nullptr) {
        throw std::bad_alloc();
    }
    return converted.get();
}

// Returns what is not null; otherwise it reports the function and the reason and ends the process.
char* notNull(char* converted, const char* function, const char* reason) {
    if (converted == nullptr) {
        errno = 0;
        messlog2(1, 0, "%s() failed: %s", function, reason);
    }
    return converted;
}

}  // namespace

char* idn_toascii(const char* name) { return convertOrNull(name, toAsciiLower); }

char* idn_toutf8(const char* name) { return convertOrNull(name, idna_to_unicode_8z8z); }

char* idn_email_toascii(const char* address) {
    const char* const at = strchr(address, '@');
    if (at == nullptr) {
        return nullptr;
    }
    const Text domain(idn_toascii(at + 1), &free);
    if (domain == nullptr) {
        return nullptr;
    }
    char* converted = nullptr;
    asprintf_safe(&converted, "%.*s@%s", static_cast<int>(at - address), address, domain.get());
    return converted;
}

char* idn_toascii_safe(const char* name) {
    char* const ascii = idn_toascii(name);
    return notNull(ascii, "idn_toascii", idn_strerror(idn_errno));
}

char* idn_toutf8_safe(const char* name) {
    char* const utf8 = idn_toutf8(name);
    return notNull(utf8, "idn_toutf8", idn_strerror(idn_errno));
}

char* idn_email_toascii_safe(const char* address) {
    char* const ascii = idn_email_toascii(address);
    const bool isAddress = strchr(address, '@') != nullptr;
    return notNull(ascii, "idn_email_toascii", isAddress ? idn_strerror(idn_errno) : "No \"@\"");
}

namespace zelvo::idn {

std::string toAscii(const std::string& name) { return convertOrThrow(name, toAsciiLower); }

std::string toUtf8(const std::string& name) { return convertOrThrow(name, idna_to_unicode_8z8z); }

std::string emailToAscii(const std::string& address) {
    const std::size_t at = address.find('@');
    if (at == std::string::npos) {
        return address;
    }
    return address.substr(0, at + 1) + toAscii(address.substr(at + 1));
}

}  // namespace zelvo::idn
